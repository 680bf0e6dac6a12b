#include "Performance/MidiSystemSetting.h"

#include <utility>

namespace tavro {

MidiSystemSetting::MidiSystemSetting(MidiSystemTable table, Preferences& preferences,
                                     const QString& nameForThisRun, MainActor& mainActor)
    : table_(std::move(table)), preferences_(preferences), mainActor_(mainActor),
      choice_{.name = nameForThisRun, .asksForShortPeriod = preferences.loadAsksForShortPeriod()} {
    if (choice_.name.isEmpty()) {
        choice_.name = QString::fromStdString(preferences_.loadMidiSystem());
    }
    if (!table_.isName(choice_.name)) {
        choice_.name = MidiSystemTable::automatic();
    }
    candidates_ = candidates();
}

void MidiSystemSetting::choose(const Choice& choice, PerformanceController& performance,
                               MidiOutputManager& midi) {
    if (choice == choice_ || !table_.isName(choice.name)) {
        return;
    }
    choice_ = choice;
    preferences_.saveMidiSystem(choice.name.toStdString());
    preferences_.saveAsksForShortPeriod(choice.asksForShortPeriod);
    performance.stopAllNotes();
    // The old ones are closed by the manager and go when it knows the new ones.
    const auto old = std::exchange(candidates_, candidates());
    midi.setSystems(systems());
    Q_EMIT changed();
}

MidiSystemTable::Candidates MidiSystemSetting::candidates() const {
    return table_.candidates(choice_.name, mainActor_, {.asksForShortPeriod = choice_.asksForShortPeriod});
}

} // namespace tavro
