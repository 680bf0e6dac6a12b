#pragma once

#include "PerformanceModel/PerformanceState.h"

#include <QString>
#include <QStringList>

#include <stdexcept>

namespace tavro {

class MidiSystemTable;

/// What the command line of `tavro` asks for.
struct ApplicationOptions {
    enum class Task { run, selfTest, showHelp, showVersion };

    /// Wrong usage; `what()` says what is wrong.
    class Error : public std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    Task task = Task::run;
    /// Settings to start with, when `hasInitialState`; otherwise the chosen preset's are.
    PerformanceState initialState;
    bool hasInitialState = false;
    /// A preset to open at the start, as a path; empty when none is given. It joins the presets whatever else
    /// is asked for; the settings to start with, when there are any, then stand in place of its own.
    QString presetFile;
    /// Whether every status text is printed, for tests that look at the program from outside.
    bool printsStatus = false;
    /// The MIDI system to use in this run: a name of the table. Empty leaves it to what the user has chosen.
    QString midi;

    /// `arguments` begin with the program's name. `midiFromEnvironment` is the value of TAVRO_MIDI, which
    /// holds where no option says otherwise; empty is none. Throws `Error`.
    [[nodiscard]] static ApplicationOptions parse(const QStringList& arguments,
                                                  const MidiSystemTable& midiSystems,
                                                  const QString& midiFromEnvironment = {});

    [[nodiscard]] static QString helpText(const MidiSystemTable& midiSystems);
};

} // namespace tavro
