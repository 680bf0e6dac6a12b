#include "ApplicationShell/TAVROPreset.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Player/MidiFile.h"
#include "Player/PlayerOptions.h"
#include "Player/ScriptPlayer.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>

#include <iostream>
#include <memory>
#include <stdexcept>

namespace {

using namespace tavro;

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badUsage = 2;

/// Passes everything on, and records the messages for a file.
class RecordingOutput final : public PlayerOutput {
public:
    RecordingOutput(PlayerOutput& next, MidiFile& file) : next_(next), file_(file) {}

    void midi(std::chrono::milliseconds time, std::span<const std::uint8_t> message) override {
        file_.add(time, message);
        next_.midi(time, message);
    }

    void show(std::chrono::milliseconds time, const ReadOuts& readOuts) override {
        next_.show(time, readOuts);
    }

private:
    PlayerOutput& next_;
    MidiFile& file_;
};

[[noreturn]] void throwFileError(const QString& path, const QFileDevice& file) {
    throw std::runtime_error(path.toStdString() + ": " + file.errorString().toStdString());
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    const bool isOpen =
        path == QLatin1String("-") ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen) {
        throwFileError(path, file);
    }
    auto content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        throwFileError(path, file);
    }
    return content;
}

void writeFile(const QString& path, const std::vector<std::uint8_t>& content) {
    QSaveFile file(path);
    const auto size = static_cast<qint64>(content.size());
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(content.data()), size) != size || !file.commit()) {
        throwFileError(path, file);
    }
}

PerformanceState readPreset(const QString& path) {
    const auto content = readFile(path);
    try {
        return TAVROPreset::decode(nlohmann::ordered_json::parse(content.begin(), content.end())).state;
    } catch (const nlohmann::ordered_json::exception&) {
        throw std::runtime_error(path.toStdString() + ": not a JSON file");
    } catch (const DecodingError& error) {
        throw std::runtime_error(path.toStdString() + ": " + error.what());
    }
}

void play(const PlayerOptions& options, const KeyScript& script) {
    const auto state = options.presetFile.isEmpty() ? PerformanceState() : readPreset(options.presetFile);
    std::unique_ptr<PlayerOutput> printer;
    if (options.format == PlayerOptions::Format::jsonLines) {
        printer = std::make_unique<JsonLinesOutput>(std::cout);
    } else {
        printer = std::make_unique<TextOutput>(std::cout);
    }
    MidiFile file;
    RecordingOutput output(*printer, file);
    ScriptPlayer(output, state).play(script);
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    if (!options.midiFile.isEmpty()) {
        writeFile(options.midiFile, file.bytes());
    }
}

int run(const QStringList& arguments) {
    const auto options = PlayerOptions::parse(arguments);
    switch (options.task) {
    case PlayerOptions::Task::showHelp:
        std::cout << PlayerOptions::helpText().toStdString();
        break;
    case PlayerOptions::Task::showVersion:
        std::cout << "tavro-play " TAVRO_VERSION "\n";
        break;
    case PlayerOptions::Task::play: {
        const auto text = readFile(options.script);
        play(options, KeyScript::parse({text.constData(), static_cast<std::size_t>(text.size())}));
        break;
    }
    }
    return success;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    try {
        return run(QCoreApplication::arguments());
    } catch (const PlayerOptions::Error& error) {
        std::cerr << "tavro-play: " << error.what() << "\n" << PlayerOptions::helpText().toStdString();
        return badUsage;
    } catch (const KeyScriptError& error) {
        std::cerr << "tavro-play: " << error.what() << "\n";
        return badUsage;
    } catch (const std::exception& error) {
        std::cerr << "tavro-play: " << error.what() << "\n";
        return failure;
    }
}
