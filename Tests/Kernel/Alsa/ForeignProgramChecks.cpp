#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"
#include "PlatformInterfaces/PanicMessages.h"
#include "SequencerPeer.h"

#include <QCoreApplication>
#include <QProcess>

#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

namespace tavro::proof {

namespace {

QString addressText(alsa::PortAddress address) {
    return QStringLiteral("%1:%2").arg(address.client).arg(address.port);
}

void aseqdumpReadsWhatThePortSends() {
    Instrument instrument;
    const auto source = addressText(instrument.source());
    QProcess aseqdump;
    aseqdump.start(QStringLiteral("aseqdump"), {QStringLiteral("-p"), source});
    // Starting a program takes its time here.
    waitFor([&] { return instrument.adapter().listeners(instrument.source().number()) == 1; },
            "aseqdump to listen");
    instrument.noteOn(60);
    instrument.noteOff(60);
    instrument.manager().sendBytes(Bytes{0xB1, 123, 0});
    const QStringList expected{source + QStringLiteral(" Note on 0, note 60, velocity 100"),
                               source + QStringLiteral(" Note off 0, note 60, velocity 0"),
                               source + QStringLiteral(" Control change 1, controller 123, value 0")};
    QStringList lines;
    QStringList others;
    try {
        waitFor(
            [&] {
                while (aseqdump.canReadLine()) {
                    const auto line = QString::fromUtf8(aseqdump.readLine()).simplified();
                    (line.startsWith(source) ? lines : others).append(line);
                }
                return lines.size() >= expected.size();
            },
            "three lines of aseqdump");
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(error.what() + std::string("; there are: ") +
                                 (lines + others).join(u'|').toStdString());
    }
    expectEqual(lines.join(u'\n').toStdString(), expected.join(u'\n').toStdString(), "aseqdump");
    aseqdump.terminate();
    expect(aseqdump.waitForFinished(10000), "aseqdump does not end");
}

void aconnectListsTheSourceAndNoOtherPort() {
    const Instrument instrument;
    QProcess aconnect;
    aconnect.start(QStringLiteral("aconnect"), {QStringLiteral("-l")});
    expect(aconnect.waitForFinished(10000), "aconnect does not end");
    const auto text = QString::fromUtf8(aconnect.readAllStandardOutput());
    expect(text.contains(QStringLiteral("client %1: 'TAVRO'").arg(instrument.source().client)),
           "no client TAVRO in " + text.toStdString());
    expectEqual(static_cast<std::uint64_t>(text.count(QStringLiteral("'TAVRO "))), 1,
                "ports of TAVRO in " + text.toStdString());
    expect(text.contains(QStringLiteral("'TAVRO Out")), "no port TAVRO Out in " + text.toStdString());
}

/// The player in a shell of its own, where it rings a note until it is ended.
class RingingPlayer {
public:
    explicit RingingPlayer(SequencerPeer& synthesizer) : synthesizer_(synthesizer) {
        // Built beside this one.
        player_.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tavro-play"),
                      {QStringLiteral("--live"), QStringLiteral("alsa"), QStringLiteral("--destination"),
                       QStringLiteral("Synth in")});
        player_.write("set humanizeVelocity 0\nset holdMode true\ndown a\nup a\nat 100000000\n");
        player_.closeWriteChannel();
        expectNext({{0x90, 60, 100}}, "the note");
    }

    ~RingingPlayer() {
        // In order, where it has not ended yet: its guard would send more to whoever has the address then.
        signal(SIGCONT);
        player_.terminate();
        player_.waitForFinished();
    }

    RingingPlayer(const RingingPlayer&) = delete;
    RingingPlayer& operator=(const RingingPlayer&) = delete;

    void signal(int signal) const {
        if (const auto process = player_.processId(); process > 0) {
            kill(static_cast<pid_t>(process), signal);
        }
    }

    void expectNext(const std::vector<Bytes>& messages, const std::string& what) {
        std::vector<Bytes> heard;
        waitFor(
            [&] {
                const auto news = synthesizer_.take();
                heard.insert(heard.end(), news.begin(), news.end());
                return heard.size() >= messages.size();
            },
            what);
        expectEqual(heard, messages, what);
    }

    void expectPanic(const std::string& what) {
        std::vector<Bytes> panic;
        for (const auto& message : panicMessages()) {
            panic.emplace_back(message.begin(), message.end());
        }
        expectNext(panic, what);
    }

private:
    SequencerPeer& synthesizer_;
    QProcess player_;
};

void guardSilencesWhatAStoppedPlayerLeaves() {
    SequencerPeer synthesizer("Synth");
    RingingPlayer player(synthesizer);
    player.signal(SIGSTOP);
    player.expectPanic("the panic while it is stopped");
}

void guardSilencesWhatAKilledPlayerLeaves() {
    SequencerPeer synthesizer("Synth");
    RingingPlayer player(synthesizer);
    player.signal(SIGKILL);
    player.expectPanic("the panic after its end");
}

} // namespace

std::vector<Check> foreignProgramChecks() {
    return {
        {"guard_silences_what_a_stopped_player_leaves", guardSilencesWhatAStoppedPlayerLeaves},
        {"guard_silences_what_a_killed_player_leaves", guardSilencesWhatAKilledPlayerLeaves},
        {"aseqdump_reads_what_the_port_sends", aseqdumpReadsWhatThePortSends},
        {"aconnect_lists_the_source_and_no_other_port", aconnectListsTheSourceAndNoOtherPort},
    };
}

} // namespace tavro::proof
