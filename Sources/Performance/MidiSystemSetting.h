#pragma once

#include "Concurrency/MainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "MidiOutput/MidiSystemTable.h"
#include "Performance/PerformanceController.h"
#include "Preferences/AppPreferences.h"

#include <QObject>
#include <QString>

#include <vector>

namespace tavro {

/// Which MIDI system plays, and how it is used, as the user chooses it. What is chosen is kept. Owns the
/// systems. Main thread only.
class MidiSystemSetting : public QObject {
    Q_OBJECT

public:
    struct Choice {
        /// Of the table, or that of all of them.
        QString name;
        /// Whether a system that works in periods is asked for a short one.
        bool asksForShortPeriod = true;

        friend bool operator==(const Choice&, const Choice&) = default;
    };

    /// The name stands above the stored one until another is chosen; empty is none. A stored name that the
    /// table does not have counts as absent. The collaborators must outlive this.
    MidiSystemSetting(MidiSystemTable table, Preferences& preferences, const QString& nameForThisRun,
                      MainActor& mainActor);

    /// The systems of the choice, in the order in which they are to be tried. At least one.
    [[nodiscard]] std::vector<MidiSystem*> systems() const { return candidates_.pointers(); }

    [[nodiscard]] const Choice& choice() const { return choice_; }

    [[nodiscard]] const MidiSystemTable& table() const { return table_; }

    /// Another choice: ends what sounds where it sounds, closes, and opens the other system. The same one
    /// does nothing. A name that the table does not have is ignored.
    void choose(const Choice& choice, PerformanceController& performance, MidiOutputManager& midi);

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] MidiSystemTable::Candidates candidates() const;

    MidiSystemTable table_;
    Preferences& preferences_;
    MainActor& mainActor_;
    Choice choice_;
    MidiSystemTable::Candidates candidates_;
};

} // namespace tavro
