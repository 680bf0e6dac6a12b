#include "Check.h"
#include "Expectations.h"
#include "Instrument.h"

#include <QProcess>

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
    waitFor(
        [&] {
            while (aseqdump.canReadLine()) {
                const auto line = QString::fromUtf8(aseqdump.readLine()).simplified();
                if (line.startsWith(source)) {
                    lines.append(line);
                }
            }
            return lines.size() >= expected.size();
        },
        "three lines of aseqdump");
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

} // namespace

std::vector<Check> foreignProgramChecks() {
    return {
        {"aseqdump_reads_what_the_port_sends", aseqdumpReadsWhatThePortSends},
        {"aconnect_lists_the_source_and_no_other_port", aconnectListsTheSourceAndNoOtherPort},
    };
}

} // namespace tavro::proof
