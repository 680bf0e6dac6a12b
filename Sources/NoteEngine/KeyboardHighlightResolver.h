#pragma once

#include "KeyboardMapping/KeyboardLayout.h"
#include "PerformanceModel/PerformanceState.h"

#include <optional>
#include <set>
#include <span>
#include <vector>

namespace tavro {

/// Which keys of the on-screen keyboard stand for the notes that sound. Pure functions; keys come and go in
/// lower case, and keys given in upper case are taken as lower case.
class KeyboardHighlightResolver {
public:
    KeyboardHighlightResolver() = delete;

    [[nodiscard]] static std::set<Character> normalized(const std::set<Character>& keys);

    /// The candidate nearest to the target: a key of the same row is nearer than any key of another row; of
    /// two equally near ones the earlier in the list. The first candidate when the target is not in the
    /// layout; nothing without candidates.
    [[nodiscard]] static std::optional<Character>
    nearestKey(Character target, std::span<const Character> candidates, const KeyboardLayout& layout);

    /// The key that stands for a note as seen from the key that sounds it: the source key itself, else the
    /// nearest key with that very note, else the nearest with its pitch class, else nothing.
    [[nodiscard]] static std::optional<Character> visualKey(int midiNote, Character preferredSourceKey,
                                                            const PerformanceState& state,
                                                            const KeyboardLayout& layout);

    /// The keys that stand for the notes of the source key, each once, in the order of the notes.
    [[nodiscard]] static std::vector<Character>
    orderedVoicingKeys(Character sourceKey, const PerformanceState& state, const KeyboardLayout& layout);

    /// The keys to light while these are active, the active ones included.
    [[nodiscard]] static std::set<Character> highlightedKeys(const std::set<Character>& active,
                                                             const PerformanceState& state,
                                                             const KeyboardLayout& layout);
};

} // namespace tavro
