#include "NoteEngine/KeyboardHighlightResolver.h"

#include "NoteEngine/ChordVoicing.h"
#include "PerformanceModel/ScaleEngine.h"

#include <algorithm>
#include <cstdlib>

namespace tavro {

namespace {

/// More than any distance within a row, so that a key of the same row always is the nearer one.
constexpr std::int64_t rowWeight = 24;

std::int64_t distance(const KeyPosition& left, const KeyPosition& right) {
    return rowWeight * std::abs(left.rowOctaveOffset - right.rowOctaveOffset) +
           std::abs(left.indexInRow - right.indexInRow);
}

/// The note that each key of a layout stands for: its own single note, whatever chord it plays. Made once for
/// all notes of a press, because every one of them is looked for among all keys.
class KeyNotes {
public:
    KeyNotes(const PerformanceState& state, const KeyboardLayout& layout) : state_(state), layout_(layout) {
        const auto& scale = ScaleEngine::scale(state.scaleName);
        entries_.reserve(layout.positions().size());
        for (const auto& row : layout.rows()) {
            for (const auto key : row.keys) {
                const auto* position = layout.position(key);
                entries_.push_back({position, ChordVoicing::singleNote(*position, state, scale)});
            }
        }
    }

    [[nodiscard]] std::optional<Character> visualKey(int midiNote, Character sourceKey) const {
        const auto* source = layout_.position(sourceKey);
        const auto pitchClass = ScaleEngine::pitchClass(midiNote);
        Nearest exact{source, nullptr, 0};
        Nearest samePitchClass{source, nullptr, 0};
        for (const auto& [position, note] : entries_) {
            if (note == midiNote) {
                if (position == source) {
                    return source->key;
                }
                exact.offer(*position);
            } else if (ScaleEngine::pitchClass(note) == pitchClass) {
                samePitchClass.offer(*position);
            }
        }
        const auto* found = exact.position != nullptr ? exact.position : samePitchClass.position;
        return found == nullptr ? std::nullopt : std::optional(found->key);
    }

    void appendVoicingKeys(Character sourceKey, std::vector<Character>& keys) const {
        const auto* source = layout_.position(sourceKey);
        if (source == nullptr) {
            return;
        }
        for (const auto note : ChordVoicing::notesForPosition(*source, state_)) {
            const auto key = visualKey(note, source->key);
            if (key && std::ranges::find(keys, *key) == keys.end()) {
                keys.push_back(*key);
            }
        }
    }

private:
    struct Entry {
        const KeyPosition* position;
        int note;
    };

    /// The nearest of the keys offered so far; of two equally near ones the first, and the first of all when
    /// there is nothing to be near to.
    struct Nearest {
        const KeyPosition* target;
        const KeyPosition* position;
        std::int64_t distanceToTarget;

        void offer(const KeyPosition& candidate) {
            const auto offered = target == nullptr ? 0 : distance(*target, candidate);
            if (position == nullptr || offered < distanceToTarget) {
                position = &candidate;
                distanceToTarget = offered;
            }
        }
    };

    const PerformanceState& state_;
    const KeyboardLayout& layout_;
    std::vector<Entry> entries_;
};

} // namespace

std::set<Character> KeyboardHighlightResolver::normalized(const std::set<Character>& keys) {
    std::set<Character> lowerCase;
    for (const auto key : keys) {
        lowerCase.insert(lowercased(key));
    }
    return lowerCase;
}

std::optional<Character> KeyboardHighlightResolver::nearestKey(Character target,
                                                               std::span<const Character> candidates,
                                                               const KeyboardLayout& layout) {
    if (candidates.empty()) {
        return std::nullopt;
    }
    auto best = candidates.front();
    const auto* targetPosition = layout.position(target);
    const auto* bestPosition = layout.position(best);
    if (targetPosition == nullptr || bestPosition == nullptr) {
        return best;
    }
    for (const auto candidate : candidates.subspan(1)) {
        const auto* position = layout.position(candidate);
        if (position != nullptr &&
            distance(*targetPosition, *position) < distance(*targetPosition, *bestPosition)) {
            best = candidate;
            bestPosition = position;
        }
    }
    return best;
}

std::optional<Character> KeyboardHighlightResolver::visualKey(int midiNote, Character preferredSourceKey,
                                                              const PerformanceState& state,
                                                              const KeyboardLayout& layout) {
    return KeyNotes(state, layout).visualKey(midiNote, preferredSourceKey);
}

std::vector<Character> KeyboardHighlightResolver::orderedVoicingKeys(Character sourceKey,
                                                                     const PerformanceState& state,
                                                                     const KeyboardLayout& layout) {
    std::vector<Character> keys;
    KeyNotes(state, layout).appendVoicingKeys(sourceKey, keys);
    return keys;
}

std::set<Character> KeyboardHighlightResolver::highlightedKeys(const std::set<Character>& active,
                                                               const PerformanceState& state,
                                                               const KeyboardLayout& layout) {
    auto lit = normalized(active);
    if (state.chordMode == ChordMode::off) {
        return lit;
    }
    const KeyNotes keyNotes(state, layout);
    std::vector<Character> voicingKeys;
    for (const auto key : active) {
        if (!layout.isMelodyKey(key, state.splitModeEnabled)) {
            voicingKeys.clear();
            keyNotes.appendVoicingKeys(key, voicingKeys);
            lit.insert(voicingKeys.begin(), voicingKeys.end());
        }
    }
    return lit;
}

} // namespace tavro
