#include "NoteEngine/KeyboardHighlightResolver.h"

#include "NoteEngine/NaiveKeyNotes.h"
#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tavro {
namespace {

using Resolver = KeyboardHighlightResolver;

/// The resolver's rules once more, by trying every key for every note.
class NaiveResolver {
public:
    explicit NaiveResolver(const PerformanceState& state)
        : state_(state), layout_(KeyboardLayout::of(state.keyboardLayout)) {
        auto single = state;
        single.chordMode = ChordMode::off;
        for (const auto& row : layout_.rows()) {
            for (const auto key : row.keys) {
                keys_.push_back(key);
                notes_.push_back(naive::keyNotes(key, single, layout_).front());
            }
        }
    }

    [[nodiscard]] std::optional<Character> keyFor(int note, Character source) const {
        std::vector<std::size_t> exact;
        std::vector<std::size_t> samePitch;
        for (std::size_t index = 0; index < keys_.size(); ++index) {
            if (notes_[index] == note) {
                if (keys_[index] == source) {
                    return source;
                }
                exact.push_back(index);
            }
            if (notes_[index] % 12 == note % 12) {
                samePitch.push_back(index);
            }
        }
        const auto& candidates = exact.empty() ? samePitch : exact;
        const auto nearest = std::ranges::min_element(
            candidates, {}, [&](std::size_t index) { return distance(source, keys_[index]); });
        return nearest == candidates.end() ? std::nullopt : std::optional(keys_[*nearest]);
    }

    [[nodiscard]] std::vector<Character> voicing(Character source) const {
        std::vector<Character> keys;
        for (const int note : naive::keyNotes(source, state_, layout_)) {
            const auto key = keyFor(note, source);
            if (key && std::ranges::count(keys, *key) == 0) {
                keys.push_back(*key);
            }
        }
        return keys;
    }

    [[nodiscard]] std::set<Character> highlights(const std::set<Character>& active) const {
        std::set<Character> result;
        for (const auto key : active) {
            result.insert(key);
            const bool isMelody = state_.splitModeEnabled && layout_.position(key)->rowIndex >= 2;
            if (state_.chordMode != ChordMode::off && !isMelody) {
                for (const auto other : voicing(key)) {
                    result.insert(other);
                }
            }
        }
        return result;
    }

    [[nodiscard]] const std::vector<Character>& keys() const { return keys_; }

    [[nodiscard]] const KeyboardLayout& layout() const { return layout_; }

private:
    [[nodiscard]] std::int64_t distance(Character one, Character other) const {
        const auto& from = *layout_.position(one);
        const auto& to = *layout_.position(other);
        return 24 * std::abs(from.rowIndex - to.rowIndex) + std::abs(from.indexInRow - to.indexInRow);
    }

    PerformanceState state_;
    const KeyboardLayout& layout_;
    std::vector<Character> keys_;
    std::vector<int> notes_;
};

RC_GTEST_PROP(HighlightProperties, AnyNoteHasTheKeyThatTheRulesSay, ()) {
    const auto state = *playableState();
    const NaiveResolver rules(state);
    const auto note = *rc::gen::inRange(0, 128);
    for (const auto key : rules.keys()) {
        RC_ASSERT(Resolver::visualKey(note, key, state, rules.layout()) == rules.keyFor(note, key));
    }
}

RC_GTEST_PROP(HighlightProperties, AnyKeyHasTheVoicingThatTheRulesSay, ()) {
    const auto state = *playableState();
    const NaiveResolver rules(state);
    for (const auto key : rules.keys()) {
        RC_ASSERT(Resolver::orderedVoicingKeys(key, state, rules.layout()) == rules.voicing(key));
    }
}

RC_GTEST_PROP(HighlightProperties, AnyKeysLightWhatTheRulesSay, ()) {
    const auto state = *playableState();
    const NaiveResolver rules(state);
    const auto active = *rc::gen::container<std::set<Character>>(rc::gen::elementOf(rules.keys()));
    RC_ASSERT(Resolver::highlightedKeys(active, state, rules.layout()) == rules.highlights(active));
}

RC_GTEST_PROP(HighlightProperties, AtAnyNumbersThePressedKeysAreLitAndAllLitKeysExist, ()) {
    const auto state = *wildState();
    const NaiveResolver rules(state);
    const auto active = *rc::gen::container<std::set<Character>>(rc::gen::elementOf(rules.keys()));
    const auto lit = Resolver::highlightedKeys(active, state, rules.layout());
    RC_ASSERT(std::ranges::includes(lit, active));
    for (const auto key : lit) {
        RC_ASSERT(rules.layout().position(key) != nullptr);
    }
}

} // namespace
} // namespace tavro
