#pragma once

#include "Concurrency/MainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "NoteEngine/MidiNoteEngine.h"
#include "PerformanceModel/PerformanceState.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <set>
#include <span>
#include <vector>

namespace tavro {

/// The logic of the main window: takes presses and releases of keys from every road, drives engine, output
/// and display, reacts to changed settings, and silences what must not go on sounding. Main thread only.
class PerformanceController : public QObject {
    Q_OBJECT

public:
    /// The collaborators must outlive this.
    PerformanceController(MidiOutputManager& midi, MainActor& mainActor, PerformanceState initialState = {},
                          RandomSource random = systemRandomSource());

    /// A press or release of a key, named by its layout's character, from whichever road. Keys outside the
    /// layout do nothing.
    void handleKeyDown(Character key);
    void handleKeyUp(Character key);

    /// Ends every note that the engine believes to sound, and whatever is still to come of a strum.
    void panic();

    /// The stop button: `panic`, and then everything off at the receivers too.
    void stopAllNotes();

    /// What quitting does to the notes: as the stop button, once, however often it is called.
    void shutDown();

    [[nodiscard]] const PerformanceState& state() const { return state_; }

    /// What it remembers of the keys that sound. Replaced when a setting changes what held keys mean.
    [[nodiscard]] const MidiNoteEngine& engine() const { return engine_; }

    /// Takes over new settings, and for those that differ does what their change asks for: some silence what
    /// sounds and replace the engine, some only silence, some apply from the next press.
    void changeState(const PerformanceState& newState);

    /// The same for the settings of a preset, but whatever differs, and even if nothing does: what sounds is
    /// silenced and the engine replaced.
    void loadState(const PerformanceState& newState);

    /// Keys that the engine holds notes for.
    [[nodiscard]] const std::set<Character>& activeKeys() const { return activeKeys_; }

    /// Keys that stand for sounding notes.
    [[nodiscard]] const std::set<Character>& highlightedKeys() const { return highlightedKeys_; }

    /// The name of the chord that sounds; "-" when nothing does.
    [[nodiscard]] const QString& currentChordText() const { return currentChordText_; }

    /// Whether the window gets the keys. Losing them ends every note, as the releases would not be seen,
    /// unless keys are played unfocused too.
    [[nodiscard]] bool isFocused() const { return isFocused_; }

    void setFocused(bool focused);

    /// Whether keys arrive, and their releases, while another application is in front.
    void setPlayingUnfocused(bool plays) { playsUnfocused_ = plays; }

    /// Chooses where the notes go. Notes that sound are ended first, at the place where they sound.
    void selectDestination(MidiObjectRef id);

    [[nodiscard]] const KeyboardLayout& layout() const;

    /// Hold and Smart Hold exclude each other: setting one on sets the other off.
    [[nodiscard]] bool holdBinding() const { return state_.holdMode; }

    void setHoldBinding(bool isOn);

    [[nodiscard]] bool smartHoldBinding() const { return state_.smartHoldMode; }

    void setSmartHoldBinding(bool isOn);

    /// Setting it on chooses the chord mode from the complexity, also when it is on already.
    [[nodiscard]] bool chordEnabledBinding() const { return state_.chordMode != ChordMode::off; }

    void setChordEnabledBinding(bool isOn);

    /// Setting it chooses the chord mode too, unless chords are off.
    [[nodiscard]] std::int64_t chordComplexityBinding() const { return state_.voicingComplexity; }

    void setChordComplexityBinding(std::int64_t complexity);

    /// Setting it on turns chords on when they are off.
    [[nodiscard]] bool splitModeBinding() const { return state_.splitModeEnabled; }

    void setSplitModeBinding(bool isOn);

Q_SIGNALS:
    void stateChanged();
    /// `activeKeys` or `highlightedKeys` changed.
    void keyboardDisplayChanged();
    void currentChordTextChanged();
    /// What sounded was silenced because a setting changed what keys mean.
    void playingStateReset();

private:
    void takeOver(const PerformanceState& newState, bool alwaysRebuilds);
    void silence(std::int64_t channel);
    void resetPlayingState(bool rebuildEngine, std::int64_t soundingChannel);
    void syncChordModeWithComplexity();
    void updateKeyboardDisplay(std::span<const NoteEvent> events);
    void updateCurrentChord();
    void cancelVisualHighlightTasks();
    [[nodiscard]] std::set<Character> keysOfHeldNotes() const;
    [[nodiscard]] std::set<Character> keysRepresentingActiveNotes() const;
    [[nodiscard]] bool shouldAnimateKeyboardHighlights(std::span<const NoteEvent> events) const;
    [[nodiscard]] std::vector<Character> strummedKeys(Character sourceKey) const;
    void scheduleStrummedHighlights(Character sourceKey, const std::vector<Character>& keys,
                                    std::int64_t generation);
    void showKeys(std::set<Character> active, std::set<Character> highlighted);
    void showChord(const QString& text);

    MidiOutputManager& midi_;
    MainActor& mainActor_;
    RandomSource random_;
    PerformanceState state_;
    MidiNoteEngine engine_;
    std::set<Character> activeKeys_;
    std::set<Character> highlightedKeys_;
    bool isFocused_ = false;
    bool playsUnfocused_ = false;
    QString currentChordText_ = QStringLiteral("-");
    std::vector<ScheduledTask> visualHighlightTasks_;
    std::int64_t visualHighlightGeneration_ = 0;
    bool didSendShutdownPanic_ = false;
};

} // namespace tavro
