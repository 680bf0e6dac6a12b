#include "ApplicationShell/ApplicationOptions.h"

#include "MidiOutput/MidiSystemTable.h"
#include "PerformanceModel/PerformanceStateCoding.h"

#include <nlohmann/json.hpp>

#include <QCommandLineParser>

namespace tavro {

namespace {

QCommandLineOption hidden(QCommandLineOption option) {
    option.setFlags(QCommandLineOption::HiddenFromHelp);
    return option;
}

struct Options {
    explicit Options(const MidiSystemTable& midiSystems)
        : midi(QStringLiteral("midi"),
               QStringLiteral(
                   "The MIDI system to use in this run; auto takes the first that is there. Without the "
                   "option the environment variable TAVRO_MIDI says it, with the same values, and "
                   "without both the choice in the window's settings."),
               midiSystems.alternatives()) {}

    QCommandLineOption midi;
    QCommandLineOption version{QStringLiteral("version"), QStringLiteral("Prints the version.")};
    QCommandLineOption help{QStringLiteral("help"), QStringLiteral("Prints this help.")};
    QCommandLineOption selfTest = hidden(QCommandLineOption(QStringLiteral("self-test")));
    QCommandLineOption state =
        hidden(QCommandLineOption(QStringLiteral("state"), QString(), QStringLiteral("JSON")));
    QCommandLineOption printStatus = hidden(QCommandLineOption(QStringLiteral("print-status")));

    void addTo(QCommandLineParser& parser) const {
        parser.setApplicationDescription(
            QStringLiteral("Turns the typing keyboard into a MIDI instrument controller."));
        parser.addPositionalArgument(
            QStringLiteral("FILE.tvp"),
            QStringLiteral("A preset to open, as if it were chosen in the window. It joins the presets."),
            QStringLiteral("[FILE.tvp]"));
        parser.addOptions({midi, version, help, selfTest, state, printStatus});
    }
};

PerformanceState decodeState(const std::string& text) {
    try {
        return PerformanceStateCoding::decode(nlohmann::ordered_json::parse(text));
    } catch (const DecodingError& error) {
        throw ApplicationOptions::Error(std::string("--state: ") + error.what());
    } catch (const nlohmann::ordered_json::exception&) {
        throw ApplicationOptions::Error("--state: not JSON: " + text);
    }
}

QString checkedMidi(const MidiSystemTable& midiSystems, const std::string& origin, const QString& value) {
    if (!midiSystems.isName(value)) {
        throw ApplicationOptions::Error(origin + " is " + midiSystems.sentence().toStdString() + ", not \"" +
                                        value.toStdString() + "\"");
    }
    return value;
}

} // namespace

ApplicationOptions ApplicationOptions::parse(const QStringList& arguments, const MidiSystemTable& midiSystems,
                                             const QString& midiFromEnvironment) {
    const Options options(midiSystems);
    QCommandLineParser parser;
    options.addTo(parser);
    if (!parser.parse(arguments)) {
        throw Error(parser.errorText().toStdString());
    }
    const auto files = parser.positionalArguments();
    if (files.size() > 1) {
        throw Error("only one preset can be opened, found also \"" + files[1].toStdString() + "\"");
    }
    ApplicationOptions parsed;
    if (!files.isEmpty()) {
        if (files.first().isEmpty()) {
            throw Error("the name of the preset's file is empty");
        }
        parsed.presetFile = files.first();
    }
    if (parser.isSet(options.help)) {
        parsed.task = Task::showHelp;
    } else if (parser.isSet(options.version)) {
        parsed.task = Task::showVersion;
    } else if (parser.isSet(options.selfTest)) {
        parsed.task = Task::selfTest;
    }
    if (parser.isSet(options.state)) {
        parsed.hasInitialState = true;
        parsed.initialState = decodeState(parser.value(options.state).toStdString());
    }
    if (parser.isSet(options.midi)) {
        parsed.midi = checkedMidi(midiSystems, "--midi", parser.value(options.midi));
    } else if (!midiFromEnvironment.isEmpty()) {
        parsed.midi = checkedMidi(midiSystems, "TAVRO_MIDI", midiFromEnvironment);
    }
    parsed.printsStatus = parser.isSet(options.printStatus);
    return parsed;
}

QString ApplicationOptions::helpText(const MidiSystemTable& midiSystems) {
    QCommandLineParser parser;
    Options(midiSystems).addTo(parser);
    return parser.helpText();
}

} // namespace tavro
