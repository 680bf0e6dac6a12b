#include "NoteEngine/ChordDetector.h"

#include "NoteEngine/NaiveChordNames.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <set>
#include <vector>

namespace tavro {
namespace {

rc::Gen<std::vector<int>> someNotes() {
    return rc::gen::container<std::vector<int>>(rc::gen::inRange(0, 128));
}

/// In a few octaves only, so that pitch classes meet again in other octaves.
rc::Gen<std::vector<int>> someNotesInTwoOctaves() {
    return rc::gen::container<std::vector<int>>(rc::gen::inRange(48, 73));
}

void expectTheRules(const std::vector<int>& notes, bool flats) {
    RC_ASSERT(ChordDetector::displayName(notes, flats) == naive::displayName(notes, flats));
    const auto expected = naive::bestMatch(notes, flats);
    const auto match = ChordDetector::detect(notes, flats);
    const bool several =
        std::ranges::any_of(notes, [&](int note) { return (note - notes.front()) % 12 != 0; });
    if (several) {
        RC_ASSERT(match.has_value() == expected.has_value());
    }
    if (several && match) {
        RC_ASSERT(match->name == expected->name);
        RC_ASSERT(match->rootPitchClass == expected->root);
        RC_ASSERT(match->score == expected->score);
    }
    RC_ASSERT(ChordDetector::rootPitchClass(notes).has_value() == match.has_value());
    if (match) {
        RC_ASSERT(ChordDetector::rootPitchClass(notes) == match->rootPitchClass);
    }
}

RC_GTEST_PROP(ChordDetectorProperties, AnyNotesReadAsTheRulesSay, (bool flats)) {
    expectTheRules(*someNotes(), flats);
}

RC_GTEST_PROP(ChordDetectorProperties, AnyNotesInTwoOctavesReadAsTheRulesSay, (bool flats)) {
    expectTheRules(*someNotesInTwoOctaves(), flats);
}

RC_GTEST_PROP(ChordDetectorProperties, OctavesHigherReadsTheSame, (bool flats)) {
    const auto notes = *rc::gen::suchThat(someNotesInTwoOctaves(), [](const auto& some) {
        return std::set<int>(some.begin(), some.end()).size() > 1;
    });
    auto higher = notes;
    for (auto& note : higher) {
        note += 12;
    }
    RC_ASSERT(ChordDetector::displayName(notes, flats) == ChordDetector::displayName(higher, flats));
}

TEST(ChordDetector, ReadsEverySetOfPitchClassesAsTheRulesSay) {
    for (unsigned set = 0; set < (1U << 11); ++set) {
        std::vector<int> close{48};
        std::vector<int> wide{48};
        for (int interval = 1; interval < 12; ++interval) {
            if ((set & (1U << (interval - 1))) != 0) {
                close.push_back(48 + interval);
                wide.push_back(60 + interval);
            }
        }
        EXPECT_EQ(ChordDetector::displayName(close, false), naive::displayName(close, false)) << set;
        EXPECT_EQ(ChordDetector::displayName(wide, true), naive::displayName(wide, true)) << set;
    }
}

} // namespace
} // namespace tavro
