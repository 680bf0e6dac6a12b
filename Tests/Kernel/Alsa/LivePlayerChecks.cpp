#include "Check.h"
#include "Expectations.h"
#include "SequencerPeer.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

#include <memory>
#include <utility>
#include <vector>

namespace tavro::proof {

namespace {

// Strums up and down, releases in the middle of one, Hold, Smart Hold, the bass, another channel, panics.
constexpr auto ownScript = R"(
set humanizeVelocity 0
set scaleName "Major"
control chordEnabledBinding true
control chordComplexityBinding 85
set bassNoteEnabled true
set strumMilliseconds 40
down a
at 60
show
at 75
up a
down f
at 300
set strumMilliseconds -25
down g
down h
at 310
up h
at 500
up f
up g
control holdBinding true
down a
at 520
up a
at 700
down d
at 730
panic
up d
control holdBinding false
at 800
set midiChannel 7
set strumMilliseconds 50
control smartHoldBinding true
down a
at 1100
up a
down d
at 1120
panic
down s
at 1300
show
at 1900
)";

QByteArray exampleOf(const QString& name) {
    QFile file(QStringLiteral(TAVRO_EXAMPLES "/") + name);
    expect(file.open(QIODevice::ReadOnly), "there is no example " + name.toStdString());
    QByteArray script;
    while (!file.atEnd()) {
        const auto line = file.readLine();
        // What chance adds would be another thing each time.
        script += line.startsWith("set humanizeVelocity") ? QByteArray("set humanizeVelocity 0\n") : line;
    }
    return script;
}

/// `tavro-play`, which prints JSON and ends as by `quit`.
std::unique_ptr<QProcess> play(const QByteArray& script, const QStringList& arguments) {
    auto player = std::make_unique<QProcess>();
    // Built beside this one.
    player->start(QCoreApplication::applicationDirPath() + QStringLiteral("/tavro-play"),
                  QStringList{QStringLiteral("--format"), QStringLiteral("jsonl")} + arguments);
    player->write(script + "\nquit\n");
    player->closeWriteChannel();
    return player;
}

QByteArray outputOf(QProcess& player) {
    waitFor([&] { return player.state() == QProcess::NotRunning; }, "the player's end");
    expect(player.exitStatus() == QProcess::NormalExit && player.exitCode() == 0,
           "the player failed: " + player.readAllStandardError().toStdString());
    return player.readAllStandardOutput();
}

std::vector<Bytes> messagesIn(const QByteArray& output) {
    std::vector<Bytes> messages;
    for (const auto& line : output.split('\n')) {
        if (const auto values = QJsonDocument::fromJson(line).object().value(QStringLiteral("midi"));
            values.isArray()) {
            auto& message = messages.emplace_back();
            for (const auto value : values.toArray()) {
                message.push_back(static_cast<std::uint8_t>(value.toInt()));
            }
        }
    }
    return messages;
}

/// One script, played live to a synthesizer of its own.
struct Playing {
    explicit Playing(const char* synthesizerName, QByteArray playedScript)
        : script(std::move(playedScript)), synthesizer(synthesizerName),
          player(
              play(script, {QStringLiteral("--live"), QStringLiteral("alsa"), QStringLiteral("--destination"),
                            QString::fromUtf8(synthesizerName) + QStringLiteral(" in")})) {}

    QByteArray script;
    SequencerPeer synthesizer;
    std::unique_ptr<QProcess> player;
};

void livePlayingIsThatOfVirtualTime() {
    std::vector<std::unique_ptr<Playing>> all;
    all.push_back(std::make_unique<Playing>("Own", QByteArray(ownScript)));
    all.push_back(std::make_unique<Playing>("Demo", exampleOf(QStringLiteral("melody-over-chords.keys"))));
    all.push_back(std::make_unique<Playing>("Strum", exampleOf(QStringLiteral("strum-with-bass.keys"))));
    for (auto& playing : all) {
        const auto printed = outputOf(*playing->player);
        const auto expected = outputOf(*play(playing->script, {}));
        expectEqual(printed.toStdString(), expected.toStdString(), "what the player prints");
        expect(messagesIn(expected).size() > 50, "too little was played");
        expectEqual(playing->synthesizer.take(), messagesIn(expected), "the synthesizer");
    }
}

} // namespace

std::vector<Check> livePlayerChecks() {
    return {{"live_playing_is_that_of_virtual_time", livePlayingIsThatOfVirtualTime}};
}

} // namespace tavro::proof
