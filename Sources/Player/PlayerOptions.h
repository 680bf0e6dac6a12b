#pragma once

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace tavro {

class MidiSystemTable;

/// What the command line of `tavro-play` asks for.
struct PlayerOptions {
    enum class Task { play, listDestinations, showHelp, showVersion };
    enum class Format { text, jsonLines };

    /// Wrong usage; `what()` says what is wrong.
    class Error : public std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    Task task = Task::play;
    Format format = Format::text;
    /// "-" is standard input.
    QString script = QStringLiteral("-");
    /// Empty when no MIDI file is wanted.
    QString midiFile;
    /// Empty for the default settings.
    QString presetFile;
    /// The MIDI system to play to in real time: a name of the table. Empty for virtual time.
    QString live;
    /// A destination's name or number; empty for the program's own source. Only set when playing live.
    QString destination;

    /// `arguments` begin with the program's name. Throws `Error`.
    [[nodiscard]] static PlayerOptions parse(const QStringList& arguments,
                                             const MidiSystemTable& midiSystems);

    [[nodiscard]] static QString helpText(const MidiSystemTable& midiSystems);
};

} // namespace tavro
