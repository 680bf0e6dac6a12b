#include "NoteEngine/MidiNoteEngine.h"

#include <algorithm>
#include <utility>

namespace tavro {

namespace {

void appendNoteOffs(std::vector<NoteEvent>& events, const Notes& notes, std::int64_t channel, Character key) {
    for (const auto note : notes) {
        events.push_back({NoteEvent::EventType::noteOff, note, 0, clampedChannel(channel), key});
    }
}

void append(std::vector<NoteEvent>& events, const std::vector<NoteEvent>& more) {
    events.insert(events.end(), more.begin(), more.end());
}

} // namespace

MidiNoteEngine::MidiNoteEngine(const KeyboardLayout& layout, RandomSource random)
    : layout_(layout), random_(std::move(random)) {}

std::vector<NoteEvent> MidiNoteEngine::keyDown(Character printedKey, const PerformanceState& state) {
    Events events;
    const auto key = lowercased(printedKey);
    auto notes = notesForKey(key, state);
    if (notes.empty()) {
        return events;
    }
    const bool isActive = activeNotesByKey_.contains(key);
    if (layout_.isMelodyKey(key, state.splitModeEnabled)) {
        if (!isActive) {
            sound(events, key, std::move(notes), state);
        }
        return events;
    }
    if (state.smartHoldMode) {
        pressWithSmartHold(events, key, std::move(notes), state);
        return events;
    }
    if (isActive) {
        // With Hold on, the second press of a latched key releases it; without, it is an autorepeat.
        return state.holdMode ? keyUp(key, state) : events;
    }
    sound(events, key, std::move(notes), state);
    bassNoteRefreshEvents(events, state, key, activeChordNotes(state));
    return events;
}

std::vector<NoteEvent> MidiNoteEngine::keyUp(Character printedKey, const PerformanceState& state) {
    Events events;
    const auto key = lowercased(printedKey);
    const bool isMelodyKey = layout_.isMelodyKey(key, state.splitModeEnabled);
    if (state.smartHoldMode && !isMelodyKey) {
        smartPhysicalKeysDown_.erase(key);
        return events;
    }
    const auto active = activeNotesByKey_.extract(key);
    if (active.empty()) {
        return events;
    }
    appendNoteOffs(events, active.mapped(), state.midiChannel, key);
    if (!isMelodyKey && activeChordNotes(state).empty()) {
        bassNoteRefreshEvents(events, state, key, {});
    }
    return events;
}

std::vector<NoteEvent> MidiNoteEngine::panic(std::int64_t channel) {
    Events events;
    for (const auto& [key, notes] : activeNotesByKey_) {
        appendNoteOffs(events, notes, channel, key);
    }
    releaseBassNote(events, channel, noKey);
    activeNotesByKey_.clear();
    smartPhysicalKeysDown_.clear();
    return events;
}

Notes MidiNoteEngine::notesForKey(Character key, const PerformanceState& state) const {
    const auto* position = layout_.position(key);
    return position == nullptr ? Notes() : ChordVoicing::notesForPosition(*position, state);
}

Notes MidiNoteEngine::activeChordNotes(const PerformanceState& state) const {
    Notes sounding;
    for (const auto& [key, notes] : activeNotesByKey_) {
        if (isActiveChordKey(key, state)) {
            sounding.insert(sounding.end(), notes.begin(), notes.end());
        }
    }
    std::ranges::sort(sounding);
    return sounding;
}

Notes MidiNoteEngine::smartInputNotes() const {
    Notes held;
    for (const auto key : smartPhysicalKeysDown_) {
        if (const auto found = activeNotesByKey_.find(key); found != activeNotesByKey_.end()) {
            held.insert(held.end(), found->second.begin(), found->second.end());
        }
    }
    std::ranges::sort(held);
    return held;
}

bool MidiNoteEngine::isActiveChordKey(Character key, const PerformanceState& state) const {
    const auto* position = layout_.position(key);
    return position != nullptr && !isMelodyPosition(*position, state.splitModeEnabled);
}

void MidiNoteEngine::pressWithSmartHold(Events& events, Character key, Notes notes,
                                        const PerformanceState& state) {
    if (const auto active = activeNotesByKey_.find(key); active != activeNotesByKey_.end()) {
        // A key of the sustained cluster is struck again: its notes sound anew, the others go on.
        appendNoteOffs(events, active->second, state.midiChannel, key);
        releaseBassNote(events, state.midiChannel, key);
    } else if (smartPhysicalKeysDown_.empty()) {
        releaseActiveChordNotes(events, state);
    }
    smartPhysicalKeysDown_.insert(key);
    sound(events, key, std::move(notes), state);
    bassNoteRefreshEvents(events, state, key, smartInputNotes());
}

void MidiNoteEngine::sound(Events& events, Character key, Notes notes, const PerformanceState& state) {
    append(events, ChordVoicing::noteOnEvents(notes, state, key, random_));
    activeNotesByKey_.insert_or_assign(key, std::move(notes));
}

void MidiNoteEngine::releaseActiveChordNotes(Events& events, const PerformanceState& state) {
    for (auto entry = activeNotesByKey_.begin(); entry != activeNotesByKey_.end();) {
        if (isActiveChordKey(entry->first, state)) {
            appendNoteOffs(events, entry->second, state.midiChannel, entry->first);
            entry = activeNotesByKey_.erase(entry);
        } else {
            ++entry;
        }
    }
    smartPhysicalKeysDown_.clear();
    releaseBassNote(events, state.midiChannel, noKey);
}

void MidiNoteEngine::bassNoteRefreshEvents(Events& events, const PerformanceState& state, Character key,
                                           const Notes& notes) {
    const auto count = static_cast<std::int64_t>(notes.size());
    const bool hasNoRoom =
        state.maxChordNotes >= 1 && count >= std::min<std::int64_t>(state.maxChordNotes, 16);
    if (hasNoRoom) {
        releaseBassNote(events, state.midiChannel, key);
        return;
    }
    const auto bass = state.bassNoteEnabled ? ChordVoicing::bassNote(notes, state) : std::nullopt;
    if (bass) {
        if (bass != currentBassNote()) {
            releaseBassNote(events, state.midiChannel, key);
            append(events, ChordVoicing::noteOnEvents(Notes{*bass}, state, key, random_));
            const auto& played = activeNotesByKey_.at(key);
            const bool isAlsoPlayed = std::ranges::find(played, *bass) != played.end();
            bass_ = BassNote{*bass, isAlsoPlayed ? noKey : key};
        }
        return;
    }
    // Without a chord that has a name, the bass of the last one goes on until nothing sounds above it.
    if (notes.empty()) {
        releaseBassNote(events, state.midiChannel, key);
    }
}

void MidiNoteEngine::releaseBassNote(Events& events, std::int64_t channel, Character key) {
    if (bass_) {
        events.push_back({.type = NoteEvent::EventType::noteOff,
                          .note = bass_->note,
                          .velocity = 0,
                          .channel = clampedChannel(channel),
                          .sourceKey = key,
                          .startedBy = bass_->startedBy});
        bass_.reset();
    }
}

} // namespace tavro
