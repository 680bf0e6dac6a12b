#include "Performance/PerformanceController.h"

#include "NoteEngine/ChordDetector.h"
#include "NoteEngine/KeyboardHighlightResolver.h"
#include "Performance/SettingReaction.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace tavro {

namespace {

/// Between two highlight steps. Settings from files may hold any number; nobody waits for a day's step.
std::chrono::milliseconds highlightStep(std::int64_t strumMilliseconds) {
    constexpr std::int64_t longest = std::int64_t{24} * 60 * 60 * 1000;
    return std::chrono::milliseconds(std::abs(std::clamp(strumMilliseconds, -longest, longest)));
}

} // namespace

PerformanceController::PerformanceController(MidiOutputManager& midi, MainActor& mainActor,
                                             PerformanceState initialState, RandomSource random)
    : midi_(midi), mainActor_(mainActor), random_(std::move(random)), state_(std::move(initialState)),
      engine_(KeyboardLayout::of(state_.keyboardLayout), random_) {
    connect(&midi_, &MidiOutputManager::connectionLost, this, &PerformanceController::panic);
}

const KeyboardLayout& PerformanceController::layout() const {
    return KeyboardLayout::of(state_.keyboardLayout);
}

void PerformanceController::handleKeyDown(Character key) {
    const auto events = engine_.keyDown(key, state_);
    midi_.send(events, state_.strumMilliseconds);
    updateKeyboardDisplay(events);
    updateCurrentChord();
}

void PerformanceController::handleKeyUp(Character key) {
    // Plain Hold latches chord keys: their releases mean nothing. With Smart Hold on as well, Smart Hold
    // rules, and the engine must hear of every release.
    const bool isLatching = state_.holdMode && !state_.smartHoldMode;
    if (isLatching && !layout().isMelodyKey(key, state_.splitModeEnabled)) {
        return;
    }
    midi_.send(engine_.keyUp(key, state_), state_.strumMilliseconds);
    cancelVisualHighlightTasks();
    showKeys(keysOfHeldNotes(), keysRepresentingActiveNotes());
    updateCurrentChord();
}

void PerformanceController::panic() {
    silence(state_.midiChannel);
}

void PerformanceController::stopAllNotes() {
    panic();
    midi_.sendAllNotesOff(state_.midiChannel);
}

void PerformanceController::shutDown() {
    if (!std::exchange(didSendShutdownPanic_, true)) {
        stopAllNotes();
    }
}

void PerformanceController::silence(std::int64_t channel) {
    cancelVisualHighlightTasks();
    midi_.send(engine_.panic(channel), 0);
    midi_.cancelPendingNoteOns();
    showKeys(keysOfHeldNotes(), keysRepresentingActiveNotes());
    showChord(QStringLiteral("-"));
}

void PerformanceController::resetPlayingState(bool rebuildEngine, std::int64_t soundingChannel) {
    silence(soundingChannel);
    if (rebuildEngine) {
        engine_ = MidiNoteEngine(layout(), random_);
    }
    Q_EMIT playingStateReset();
}

void PerformanceController::changeState(const PerformanceState& newState) {
    if (newState != state_) {
        takeOver(newState, false);
    }
}

void PerformanceController::loadState(const PerformanceState& newState) {
    takeOver(newState, true);
}

void PerformanceController::takeOver(const PerformanceState& newState, bool alwaysRebuilds) {
    const auto previous = std::exchange(state_, newState);
    const auto reaction = alwaysRebuilds ? SettingReaction::rebuild : reactionTo(previous, state_);
    if (state_.voicingComplexity != previous.voicingComplexity) {
        syncChordModeWithComplexity();
    }
    if (reaction != SettingReaction::none) {
        // What sounds was sent on the channel that was in force until now.
        resetPlayingState(reaction == SettingReaction::rebuild, previous.midiChannel);
    }
    Q_EMIT stateChanged();
}

void PerformanceController::syncChordModeWithComplexity() {
    if (state_.chordMode != ChordMode::off) {
        state_.chordMode = chordModeForComplexity(state_.voicingComplexity);
    }
}

void PerformanceController::setFocused(bool focused) {
    if (focused == isFocused_) {
        return;
    }
    isFocused_ = focused;
    if (!focused && !playsUnfocused_) {
        panic();
    }
}

void PerformanceController::selectDestination(MidiObjectRef id) {
    if (id != midi_.selectedDestinationID()) {
        panic();
        midi_.setSelectedDestinationID(id);
    }
}

void PerformanceController::setHoldBinding(bool isOn) {
    auto changed = state_;
    changed.holdMode = isOn;
    changed.smartHoldMode = changed.smartHoldMode && !isOn;
    changeState(changed);
}

void PerformanceController::setSmartHoldBinding(bool isOn) {
    auto changed = state_;
    changed.smartHoldMode = isOn;
    changed.holdMode = changed.holdMode && !isOn;
    changeState(changed);
}

void PerformanceController::setChordEnabledBinding(bool isOn) {
    auto changed = state_;
    changed.chordMode = isOn ? chordModeForComplexity(state_.voicingComplexity) : ChordMode::off;
    changeState(changed);
}

void PerformanceController::setChordComplexityBinding(std::int64_t complexity) {
    auto changed = state_;
    changed.voicingComplexity = complexity;
    if (changed.chordMode != ChordMode::off) {
        changed.chordMode = chordModeForComplexity(complexity);
    }
    changeState(changed);
}

void PerformanceController::setSplitModeBinding(bool isOn) {
    auto changed = state_;
    changed.splitModeEnabled = isOn;
    if (isOn && changed.chordMode == ChordMode::off) {
        changed.chordMode = chordModeForComplexity(state_.voicingComplexity);
    }
    changeState(changed);
}

void PerformanceController::updateKeyboardDisplay(std::span<const NoteEvent> events) {
    const bool animates = shouldAnimateKeyboardHighlights(events);
    cancelVisualHighlightTasks();
    const auto finalKeys = keysRepresentingActiveNotes();
    if (!animates) {
        showKeys(keysOfHeldNotes(), finalKeys);
        return;
    }
    std::vector<Character> sourceKeys;
    std::set<Character> stepKeys;
    for (const auto& event : events) {
        if (event.type != NoteEvent::EventType::noteOn || event.sourceKey == noKey ||
            std::ranges::find(sourceKeys, event.sourceKey) != sourceKeys.end()) {
            continue;
        }
        sourceKeys.push_back(event.sourceKey);
        const auto keys = strummedKeys(event.sourceKey);
        stepKeys.insert(keys.begin(), keys.end());
        scheduleStrummedHighlights(event.sourceKey, keys, visualHighlightGeneration_);
    }
    // What goes on sounding stays lit, what this press does not strum is lit at once, and the steps do the
    // rest.
    std::set<Character> lit;
    std::ranges::copy_if(finalKeys, std::inserter(lit, lit.end()), [&](Character key) {
        return highlightedKeys_.contains(key) || !stepKeys.contains(key);
    });
    showKeys(keysOfHeldNotes(), std::move(lit));
}

bool PerformanceController::shouldAnimateKeyboardHighlights(std::span<const NoteEvent> events) const {
    if (state_.chordMode == ChordMode::off || state_.strumMilliseconds == 0) {
        return false;
    }
    return std::ranges::any_of(events, [this](const NoteEvent& event) {
        return event.type == NoteEvent::EventType::noteOn && event.sourceKey != noKey &&
               !layout().isMelodyKey(event.sourceKey, state_.splitModeEnabled);
    });
}

std::vector<Character> PerformanceController::strummedKeys(Character sourceKey) const {
    if (layout().isMelodyKey(sourceKey, state_.splitModeEnabled)) {
        return {lowercased(sourceKey)};
    }
    auto keys = KeyboardHighlightResolver::orderedVoicingKeys(sourceKey, state_, layout());
    if (state_.strumMilliseconds < 0) {
        std::ranges::reverse(keys);
    }
    return keys;
}

void PerformanceController::scheduleStrummedHighlights(Character sourceKey,
                                                       const std::vector<Character>& keys,
                                                       std::int64_t generation) {
    auto delay = std::chrono::milliseconds::zero();
    for (const auto key : keys) {
        visualHighlightTasks_.push_back(mainActor_.after(delay, [this, sourceKey, key, generation] {
            if (generation == visualHighlightGeneration_ && engine_.activeNotesByKey().contains(sourceKey)) {
                auto lit = highlightedKeys_;
                lit.insert(key);
                showKeys(activeKeys_, std::move(lit));
            }
        }));
        delay += highlightStep(state_.strumMilliseconds);
    }
}

void PerformanceController::cancelVisualHighlightTasks() {
    ++visualHighlightGeneration_;
    visualHighlightTasks_.clear();
}

void PerformanceController::updateCurrentChord() {
    const bool preferFlats = ScaleEngine::preferFlats(state_.rootSemitone, state_.scaleName);
    const auto notes = engine_.activeChordNotes(state_);
    showChord(QString::fromStdString(ChordDetector::displayName(notes, preferFlats)));
}

std::set<Character> PerformanceController::keysOfHeldNotes() const {
    std::set<Character> keys;
    for (const auto& entry : engine_.activeNotesByKey()) {
        keys.insert(keys.end(), entry.first);
    }
    return keys;
}

std::set<Character> PerformanceController::keysRepresentingActiveNotes() const {
    return KeyboardHighlightResolver::highlightedKeys(keysOfHeldNotes(), state_, layout());
}

void PerformanceController::showKeys(std::set<Character> active, std::set<Character> highlighted) {
    if (active == activeKeys_ && highlighted == highlightedKeys_) {
        return;
    }
    activeKeys_ = std::move(active);
    highlightedKeys_ = std::move(highlighted);
    Q_EMIT keyboardDisplayChanged();
}

void PerformanceController::showChord(const QString& text) {
    if (text != currentChordText_) {
        currentChordText_ = text;
        Q_EMIT currentChordTextChanged();
    }
}

} // namespace tavro
