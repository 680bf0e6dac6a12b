#include "Player/PlayerOptions.h"

#include "MidiOutput/MidiSystemTable.h"

#include <QCommandLineParser>

namespace tavro {

namespace {

struct Options {
    explicit Options(const MidiSystemTable& midiSystems)
        : live(QStringLiteral("live"),
               QStringLiteral("Plays in real time to a MIDI system, through the port \"TAVRO Out\" unless a "
                              "destination is chosen. The end of the script silences everything."),
               midiSystems.alternatives()) {}

    QCommandLineOption format{QStringLiteral("format"),
                              QStringLiteral("How events are printed: text or jsonl."),
                              QStringLiteral("text|jsonl"), QStringLiteral("text")};
    QCommandLineOption out{QStringLiteral("out"),
                           QStringLiteral("Also writes a Standard MIDI File (type 0)."),
                           QStringLiteral("FILE.mid")};
    QCommandLineOption preset{QStringLiteral("preset"),
                              QStringLiteral("Starts with the settings of a preset."),
                              QStringLiteral("FILE.tvp")};
    QCommandLineOption live;
    QCommandLineOption destination{
        QStringLiteral("destination"),
        QStringLiteral("With --live: plays to this destination and to nothing else. The name is the one "
                       "that --list-destinations shows; its number is taken too."),
        QStringLiteral("NAME")};
    QCommandLineOption listDestinations{
        QStringLiteral("list-destinations"),
        QStringLiteral("Prints the number and the name of each destination of the MIDI system that --live "
                       "names (auto without it), and ends.")};
    QCommandLineOption version{QStringLiteral("version"), QStringLiteral("Prints the version.")};
    QCommandLineOption help{QStringLiteral("help"), QStringLiteral("Prints this help.")};

    void addTo(QCommandLineParser& parser) const {
        parser.setApplicationDescription(QStringLiteral(
            "Plays a key script without a window, and prints the MIDI messages. Without --live it does not "
            "wait: the time of the script is virtual.\n\n"
            "Exit status: 0 when the script was played; 1 for a failure, the loss of the MIDI system among "
            "them; 2 for wrong usage or a wrong script; 130 when a signal ended live playing, after "
            "everything was silenced."));
        parser.addPositionalArgument(QStringLiteral("SCRIPT"),
                                     QStringLiteral("The key script; - or nothing is standard input."),
                                     QStringLiteral("[SCRIPT|-]"));
        parser.addOptions({format, out, preset, live, destination, listDestinations, version, help});
    }
};

} // namespace

PlayerOptions PlayerOptions::parse(const QStringList& arguments, const MidiSystemTable& midiSystems) {
    const Options options(midiSystems);
    QCommandLineParser parser;
    options.addTo(parser);
    if (!parser.parse(arguments)) {
        throw Error(parser.errorText().toStdString());
    }
    PlayerOptions parsed;
    if (parser.isSet(options.help)) {
        parsed.task = Task::showHelp;
        return parsed;
    }
    if (parser.isSet(options.version)) {
        parsed.task = Task::showVersion;
        return parsed;
    }
    const auto format = parser.value(options.format);
    if (format == QLatin1String("jsonl")) {
        parsed.format = Format::jsonLines;
    } else if (format != QLatin1String("text")) {
        throw Error("--format is text or jsonl, not \"" + format.toStdString() + "\"");
    }
    const auto positional = parser.positionalArguments();
    if (positional.size() > 1) {
        throw Error("only one script can be played, found also \"" + positional[1].toStdString() + "\"");
    }
    if (!positional.isEmpty()) {
        parsed.script = positional.first();
    }
    parsed.live = parser.value(options.live);
    if (parser.isSet(options.live) && !midiSystems.isName(parsed.live)) {
        throw Error("--live is " + midiSystems.sentence().toStdString() + ", not \"" +
                    parsed.live.toStdString() + "\"");
    }
    parsed.destination = parser.value(options.destination);
    if (parser.isSet(options.listDestinations)) {
        if (!positional.isEmpty() || parser.isSet(options.destination)) {
            throw Error("--list-destinations plays nothing; give it neither a script nor --destination");
        }
        parsed.task = Task::listDestinations;
        return parsed;
    }
    if (parser.isSet(options.destination)) {
        if (parsed.live.isEmpty()) {
            throw Error("--destination needs --live");
        }
        if (parsed.destination.isEmpty()) {
            throw Error("--destination needs a name");
        }
    }
    parsed.midiFile = parser.value(options.out);
    parsed.presetFile = parser.value(options.preset);
    return parsed;
}

QString PlayerOptions::helpText(const MidiSystemTable& midiSystems) {
    QCommandLineParser parser;
    Options(midiSystems).addTo(parser);
    return parser.helpText();
}

} // namespace tavro
