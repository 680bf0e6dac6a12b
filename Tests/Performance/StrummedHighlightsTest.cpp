#include "Performance/ControllerFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using namespace std::chrono_literals;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// Major sevenths over the home row: a sounds C4 G4 B4 E5, which are lit as a, g, j and the tenth key.
PerformanceState sevenths(std::int64_t strum) {
    PerformanceState state;
    state.scaleName = "Major";
    state.chordMode = ChordMode::seventh;
    state.voicingComplexity = 70;
    state.strumMilliseconds = strum;
    return state;
}

constexpr Character tenthKey = U'\u00F6';

class StrummedHighlights : public testing::Test {
protected:
    void runTo(std::chrono::milliseconds time) { fixture.mainActor.runUntil(time); }

    const std::set<Character>& lit() { return fixture.controller.highlightedKeys(); }

    ControllerFixture fixture{sevenths(40)};
};

TEST_F(StrummedHighlights, withoutStrumEveryKeyLightsAtOnce) {
    ControllerFixture plain(sevenths(0));
    plain.controller.handleKeyDown(U'a');
    EXPECT_THAT(plain.controller.highlightedKeys(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey));
    EXPECT_FALSE(plain.mainActor.hasWork());
}

TEST_F(StrummedHighlights, lightKeyByKeyWithTheNotes) {
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(lit(), IsEmpty());
    runTo(0ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a'));
    runTo(40ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g'));
    runTo(119ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j'));
    runTo(120ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey));
    EXPECT_EQ(fixture.takeSent().size(), 4U);
}

TEST_F(StrummedHighlights, lightDownwardForANegativeStrum) {
    ControllerFixture down(sevenths(-40));
    down.controller.handleKeyDown(U'a');
    down.mainActor.runDue();
    EXPECT_THAT(down.controller.highlightedKeys(), UnorderedElementsAre(tenthKey));
    down.mainActor.runUntil(40ms);
    EXPECT_THAT(down.controller.highlightedKeys(), UnorderedElementsAre(tenthKey, U'j'));
}

TEST_F(StrummedHighlights, stayDarkAfterARelease) {
    fixture.controller.handleKeyDown(U'a');
    runTo(50ms);
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(lit(), IsEmpty());
    runTo(500ms);
    EXPECT_THAT(lit(), IsEmpty());
}

TEST_F(StrummedHighlights, aSecondPressEndsTheStepsOfTheFirst) {
    fixture.controller.handleKeyDown(U'a');
    runTo(0ms);
    fixture.controller.handleKeyDown(U's');
    // The first chord's remaining keys are lit at once: no step of this press is going to light them.
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey));
    runTo(500ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey, U's', U'h', U'k', U'\u00E4'));
}

TEST_F(StrummedHighlights, keysThatNoLongerSoundGoDarkAtThePress) {
    fixture.controller.setSmartHoldBinding(true);
    fixture.controller.handleKeyDown(U'a');
    fixture.controller.handleKeyUp(U'a');
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey));
    fixture.controller.handleKeyDown(U's');
    EXPECT_THAT(lit(), IsEmpty());
    runTo(0ms);
    EXPECT_THAT(lit(), UnorderedElementsAre(U's'));
}

TEST_F(StrummedHighlights, melodyKeysLightAtOnce) {
    fixture.controller.setSplitModeBinding(true);
    fixture.controller.handleKeyDown(U'q');
    EXPECT_THAT(lit(), UnorderedElementsAre(U'q'));
    EXPECT_FALSE(fixture.mainActor.hasWork());
}

TEST_F(StrummedHighlights, singleNotesLightAtOnce) {
    fixture.controller.setChordEnabledBinding(false);
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a'));
}

TEST_F(StrummedHighlights, areNotSilencedByAnAutorepeat) {
    fixture.controller.handleKeyDown(U'a');
    runTo(40ms);
    fixture.controller.handleKeyDown(U'a');
    EXPECT_THAT(lit(), UnorderedElementsAre(U'a', U'g', U'j', tenthKey));
    EXPECT_EQ(fixture.takeSent().size(), 2U);
}

TEST_F(StrummedHighlights, followTheWholeSettingWhateverItsSize) {
    fixture.change([](auto& state) { state.strumMilliseconds = std::numeric_limits<std::int64_t>::min(); });
    fixture.controller.handleKeyDown(U'a');
    runTo(300ms);
    EXPECT_EQ(fixture.takeSent().size(), 4U);
    EXPECT_THAT(lit(), UnorderedElementsAre(tenthKey));
}

} // namespace
} // namespace tavro
