#include "Player/PlayerOptions.h"

#include <QCommandLineParser>

namespace tavro {

namespace {

struct Options {
    QCommandLineOption format{QStringLiteral("format"),
                              QStringLiteral("How events are printed: text or jsonl."),
                              QStringLiteral("text|jsonl"), QStringLiteral("text")};
    QCommandLineOption out{QStringLiteral("out"),
                           QStringLiteral("Also writes a Standard MIDI File (type 0)."),
                           QStringLiteral("FILE.mid")};
    QCommandLineOption preset{QStringLiteral("preset"),
                              QStringLiteral("Starts with the settings of a preset."),
                              QStringLiteral("FILE.tvp")};
    QCommandLineOption version{QStringLiteral("version"), QStringLiteral("Prints the version.")};
    QCommandLineOption help{QStringLiteral("help"), QStringLiteral("Prints this help.")};

    void addTo(QCommandLineParser& parser) const {
        parser.setApplicationDescription(QStringLiteral(
            "Plays a key script without a window, in virtual time, and prints the MIDI messages."));
        parser.addPositionalArgument(QStringLiteral("SCRIPT"),
                                     QStringLiteral("The key script; - or nothing is standard input."),
                                     QStringLiteral("[SCRIPT|-]"));
        parser.addOptions({format, out, preset, version, help});
    }
};

} // namespace

PlayerOptions PlayerOptions::parse(const QStringList& arguments) {
    const Options options;
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
    parsed.midiFile = parser.value(options.out);
    parsed.presetFile = parser.value(options.preset);
    return parsed;
}

QString PlayerOptions::helpText() {
    QCommandLineParser parser;
    Options().addTo(parser);
    return parser.helpText();
}

} // namespace tavro
