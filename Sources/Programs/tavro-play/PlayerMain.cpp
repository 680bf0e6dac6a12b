#include "Performance/GuardLink.h"
#include "Platform/Headless/GuardAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Platform/Qt/ProcessSignals.h"
#include "Platform/Qt/QtMainActor.h"
#include "Player/DestinationChoice.h"
#include "Player/LivePacer.h"
#include "Player/MidiFile.h"
#include "Player/Pacer.h"
#include "Player/PlayerOptions.h"
#include "Player/ScriptPlayer.h"
#include "Presets/PresetFile.h"
#include "Presets/SavedFile.h"
#include "Programs/MidiSystems/MidiSystems.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

#if defined(Q_OS_LINUX)
#include "Platform/Linux/Guard/GuardProcess.h"
#endif

namespace {

using namespace tavro;

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badUsage = 2;
constexpr int endedBySignal = 130;
/// The last messages leave meanwhile, which may take two periods of a slow MIDI server.
constexpr std::chrono::milliseconds timeToSettle{400};

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
    const auto reason =
        SavedFile::write(path, {reinterpret_cast<const char*>(content.data()), content.size()});
    if (!reason.isEmpty()) {
        throw std::runtime_error((path + QStringLiteral(": ") + reason).toStdString());
    }
}

PerformanceState readPreset(const QString& path) {
    if (path != QLatin1String("-")) {
        return PresetFile::read(path).state;
    }
    QFile input;
    if (!input.open(stdin, QIODevice::ReadOnly)) {
        throwFileError(path, input);
    }
    return PresetFile::read(input, path).state;
}

/// The MIDI systems to be tried for `--live`, or for a list of what one has.
MidiSystemTable::Candidates chooseMidiSystems(const QString& name, MainActor& mainActor) {
    // There is no window that would freeze meanwhile, and no second try.
    const MidiSystemOptions options{.patience = std::chrono::seconds(10)};
    auto candidates = MidiSystems::ofThisPlatform().candidates(name, mainActor, options);
    if (candidates.systems.empty()) {
        throw std::runtime_error("there is no MIDI system on this platform");
    }
    return candidates;
}

/// Throws when the output could become a client of no system.
void requireClient(const MidiOutputManager& midi, const QString& asked,
                   const MidiSystemTable::Candidates& candidates) {
    if (!midi.hasClient()) {
        throw std::runtime_error("no MIDI system can be used for --live " + asked.toStdString() + ": " +
                                 candidates.reasons(midi.clientFailures()));
    }
}

void listDestinations(const PlayerOptions& options) {
    QtMainActor mainActor;
    const auto asked = options.live.isEmpty() ? MidiSystemTable::automatic() : options.live;
    const auto candidates = chooseMidiSystems(asked, mainActor);
    const MidiOutputManager midi(candidates.pointers(), mainActor);
    requireClient(midi, asked, candidates);
    std::cout << DestinationChoice::list(midi.destinations());
}

/// Who silences the receivers when this program is stopped or killed.
std::unique_ptr<Guard> makeGuard() {
#if defined(Q_OS_LINUX)
    return std::make_unique<guard::GuardProcess>(
        QCoreApplication::applicationDirPath().toStdString() + "/tavro-guard", std::string());
#else
    return std::make_unique<headless::GuardAdapter>();
#endif
}

/// Silences before the process stops. When it goes on, so does the script, where it was.
void stopInOrder(ScriptPlayer& player, LivePacer& pacer, GuardLink& guardLink,
                 const posix::ProcessSignals& signals) {
    const auto begin = std::chrono::steady_clock::now();
    player.silence();
    std::this_thread::sleep_for(timeToSettle);
    // Nobody need wait for a stopped program.
    guardLink.setBusy(false);
    signals.stopNow();
    guardLink.setBusy(true);
    pacer.postpone(std::chrono::steady_clock::now() - begin);
}

int playLive(const PlayerOptions& options, const KeyScript& script, const PerformanceState& state,
             PlayerOutput& output) {
    // Who reads along reads what sounds now.
    std::cout << std::unitbuf;
    QtMainActor mainActor;
    const auto candidates = chooseMidiSystems(options.live, mainActor);
    LivePacer pacer;
    auto status = success;
    const auto guard = makeGuard();
    ScriptPlayer player(output, candidates.pointers(), pacer, state);
    requireClient(player.midi(), options.live, candidates);
    if (!player.midi().isReady()) {
        throw std::runtime_error(player.midi().statusText().toStdString());
    }
    if (!options.destination.isEmpty()) {
        player.selectDestination(
            DestinationChoice::find(player.midi().destinations(), options.destination.toStdString()));
    }
    GuardLink guardLink(*guard, mainActor, player.midi());
    guardLink.setBusy(true);
    std::optional<posix::ProcessSignals> signals;
    signals.emplace(
        [&] {
            status = endedBySignal;
            pacer.interrupt();
        },
        [&] { stopInOrder(player, pacer, guardLink, *signals); });
    player.play(script);
    player.quit();
    if (player.hasLostMidiSystem()) {
        std::cerr << "tavro-play: the MIDI system has gone before the script was at its end\n";
        return failure;
    }
    if (const auto dropped = player.midi().droppedMessages(); dropped != 0) {
        std::cerr << "tavro-play: the MIDI system has lost " << dropped << " messages\n";
        return failure;
    }
    return status;
}

int playAtOnce(const KeyScript& script, const PerformanceState& state, PlayerOutput& output) {
    headless::MidiSystemAdapter midiSystem;
    midiSystem.recordsMessages = false;
    VirtualPacer pacer;
    ScriptPlayer player(output, midiSystem, pacer, state);
    player.play(script);
    player.runOut();
    return success;
}

int play(const PlayerOptions& options, const KeyScript& script) {
    const auto state = options.presetFile.isEmpty() ? PerformanceState() : readPreset(options.presetFile);
    std::unique_ptr<PlayerOutput> printer;
    if (options.format == PlayerOptions::Format::jsonLines) {
        printer = std::make_unique<JsonLinesOutput>(std::cout);
    } else {
        printer = std::make_unique<TextOutput>(std::cout);
    }
    MidiFile file;
    RecordingOutput output(*printer, file);
    const auto status =
        options.live.isEmpty() ? playAtOnce(script, state, output) : playLive(options, script, state, output);
    if (!options.midiFile.isEmpty()) {
        writeFile(options.midiFile, file.bytes());
    }
    return status;
}

int run(const QStringList& arguments) {
    const auto options = PlayerOptions::parse(arguments, MidiSystems::ofThisPlatform());
    auto status = success;
    switch (options.task) {
    case PlayerOptions::Task::showHelp:
        std::cout << PlayerOptions::helpText(MidiSystems::ofThisPlatform()).toStdString();
        break;
    case PlayerOptions::Task::showVersion:
        std::cout << "tavro-play " TAVRO_VERSION "\n";
        break;
    case PlayerOptions::Task::listDestinations:
        listDestinations(options);
        break;
    case PlayerOptions::Task::play: {
        const auto text = readFile(options.script);
        status = play(options, KeyScript::parse({text.constData(), static_cast<std::size_t>(text.size())}));
        break;
    }
    }
    if (!std::cout.flush()) {
        throw std::runtime_error("standard output cannot be written");
    }
    return status;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    try {
        return run(QCoreApplication::arguments());
    } catch (const PlayerOptions::Error& error) {
        std::cerr << "tavro-play: " << error.what() << "\n"
                  << PlayerOptions::helpText(MidiSystems::ofThisPlatform()).toStdString();
        return badUsage;
    } catch (const KeyScriptError& error) {
        std::cerr << "tavro-play: " << error.what() << "\n";
        return badUsage;
    } catch (const std::exception& error) {
        std::cerr << "tavro-play: " << error.what() << "\n";
        return failure;
    }
}
