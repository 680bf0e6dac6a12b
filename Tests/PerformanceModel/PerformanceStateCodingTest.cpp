#include "PerformanceModel/PerformanceStateCoding.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <string>

namespace tavro {
namespace {

using Json = nlohmann::ordered_json;

PerformanceState decoded(const std::string& text) {
    return PerformanceStateCoding::decode(Json::parse(text));
}

TEST(PerformanceStateEncoding, WritesAllKeysInOrder) {
    EXPECT_EQ(PerformanceStateCoding::encode({}).dump(),
              R"({"rootSemitone":0,"scaleName":"Chromatic","baseMidiC":60,"globalOctaveOffset":0,)"
              R"("velocity":100,"humanizeVelocity":7,"strumMilliseconds":0,"voicingComplexity":0,)"
              R"("maxChordNotes":8,"midiChannel":1,"chordMode":"Off","holdMode":false,)"
              R"("smartHoldMode":false,"bassNoteEnabled":false,"bassOctaveDown":1,)"
              R"("splitModeEnabled":false,"melodyOctaveOffset":0,"keyboardLayout":"QWERTZ"})");
}

TEST(PerformanceStateEncoding, WritesEveryValueAsItStands) {
    PerformanceState state;
    state.rootSemitone = -3;
    state.scaleName = "Blues \"Minor\"";
    state.baseMidiC = 48;
    state.globalOctaveOffset = -2;
    state.velocity = 300;
    state.humanizeVelocity = 30;
    state.strumMilliseconds = -50;
    state.voicingComplexity = 94;
    state.maxChordNotes = 0;
    state.midiChannel = 16;
    state.chordMode = ChordMode::eleventh;
    state.holdMode = true;
    state.smartHoldMode = true;
    state.bassNoteEnabled = true;
    state.bassOctaveDown = 2;
    state.splitModeEnabled = true;
    state.melodyOctaveOffset = 3;
    state.keyboardLayout = KeyboardLayoutKind::qwerty;
    EXPECT_EQ(PerformanceStateCoding::encode(state).dump(),
              R"({"rootSemitone":-3,"scaleName":"Blues \"Minor\"","baseMidiC":48,"globalOctaveOffset":-2,)"
              R"("velocity":300,"humanizeVelocity":30,"strumMilliseconds":-50,"voicingComplexity":94,)"
              R"("maxChordNotes":0,"midiChannel":16,"chordMode":"Eleventh","holdMode":true,)"
              R"("smartHoldMode":true,"bassNoteEnabled":true,"bassOctaveDown":2,)"
              R"("splitModeEnabled":true,"melodyOctaveOffset":3,"keyboardLayout":"QWERTY"})");
}

TEST(PerformanceStateDecoding, OfAnEmptyObjectGivesTheDefaults) {
    EXPECT_EQ(decoded("{}"), PerformanceState());
}

TEST(PerformanceStateDecoding, OfAnOlderFileGivesDefaultsForWhatItDoesNotHave) {
    PerformanceState expected;
    expected.rootSemitone = 2;
    expected.scaleName = "Dorian";
    expected.baseMidiC = 48;
    expected.globalOctaveOffset = 1;
    expected.velocity = 90;
    expected.humanizeVelocity = 0;
    expected.strumMilliseconds = 20;
    expected.voicingComplexity = 50;
    expected.maxChordNotes = 4;
    expected.midiChannel = 5;
    EXPECT_EQ(decoded(R"({"rootSemitone":2,"scaleName":"Dorian","baseMidiC":48,"globalOctaveOffset":1,
                          "velocity":90,"humanizeVelocity":0,"strumMilliseconds":20,
                          "voicingComplexity":50,"maxChordNotes":4,"midiChannel":5})"),
              expected);
}

TEST(PerformanceStateDecoding, IgnoresUnknownKeysWhateverTheyHold) {
    EXPECT_EQ(decoded(R"({"velocity":90,"Velocity":"loud","colour":[1,{"a":null}]})").velocity, 90);
}

TEST(PerformanceStateDecoding, DoesNotDependOnTheOrderOfTheKeys) {
    const auto state = decoded(R"({"keyboardLayout":"QWERTY","rootSemitone":4})");
    EXPECT_EQ(state.rootSemitone, 4);
    EXPECT_EQ(state.keyboardLayout, KeyboardLayoutKind::qwerty);
}

TEST(PerformanceStateDecoding, KeepsNumbersOutOfRangeAndUnknownScales) {
    const auto state = decoded(R"({"velocity":300,"midiChannel":0,"scaleName":"Klingon"})");
    EXPECT_EQ(state.velocity, 300);
    EXPECT_EQ(state.midiChannel, 0);
    EXPECT_EQ(state.scaleName, "Klingon");
}

struct IntegerCase {
    std::string json;
    std::int64_t value;
};

class IntegerDecoding : public testing::TestWithParam<IntegerCase> {};

TEST_P(IntegerDecoding, TakesNumbersWithoutAFraction) {
    EXPECT_EQ(decoded(R"({"baseMidiC":)" + GetParam().json + "}").baseMidiC, GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, IntegerDecoding,
    testing::Values(IntegerCase{"0", 0}, IntegerCase{"-7", -7}, IntegerCase{"60.0", 60},
                    IntegerCase{"6e1", 60}, IntegerCase{"-60.000", -60}, IntegerCase{"-0.0", 0},
                    IntegerCase{"1e18", 1000000000000000000},
                    IntegerCase{"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
                    IntegerCase{"-9223372036854775808", std::numeric_limits<std::int64_t>::min()}));

class EachSetting : public testing::TestWithParam<const char*> {};

TEST_P(EachSetting, IsItsDefaultWhenNull) {
    EXPECT_EQ(decoded("{\"" + std::string(GetParam()) + "\":null}"), PerformanceState());
}

TEST_P(EachSetting, StoredAsNullBecomesItsDefaultAndNothingElseChanges) {
    PerformanceState changed{1, "Major",          61,   1,    2,    3, 4,    5,  6,
                             7, ChordMode::ninth, true, true, true, 9, true, 10, KeyboardLayoutKind::qwerty};
    const auto before = changed;
    PerformanceStateCoding::decodeField(changed, GetParam(), nullptr);
    EXPECT_EQ(PerformanceStateCoding::differences(before, changed),
              std::vector<std::string_view>{GetParam()});
    EXPECT_EQ(PerformanceStateCoding::encode(changed)[GetParam()],
              PerformanceStateCoding::encode({})[GetParam()]);
}

INSTANTIATE_TEST_SUITE_P(AllKeys, EachSetting,
                         testing::Values("rootSemitone", "scaleName", "baseMidiC", "globalOctaveOffset",
                                         "velocity", "humanizeVelocity", "strumMilliseconds",
                                         "voicingComplexity", "maxChordNotes", "midiChannel", "chordMode",
                                         "holdMode", "smartHoldMode", "bassNoteEnabled", "bassOctaveDown",
                                         "splitModeEnabled", "melodyOctaveOffset", "keyboardLayout"),
                         [](const auto& test) { return std::string(test.param); });

TEST(PerformanceStateDecoding, OfEachChordModeAndLayout) {
    for (const auto mode : allChordModes) {
        EXPECT_EQ(PerformanceStateCoding::decode(Json{{"chordMode", rawValue(mode)}}).chordMode, mode);
    }
    for (const auto kind : allKeyboardLayoutKinds) {
        EXPECT_EQ(PerformanceStateCoding::decode(Json{{"keyboardLayout", rawValue(kind)}}).keyboardLayout,
                  kind);
    }
}

TEST(PerformanceStateDecoding, OfOneFieldChangesThatFieldOnly) {
    PerformanceState state;
    PerformanceStateCoding::decodeField(state, "chordMode", "Seventh");
    EXPECT_EQ(state.chordMode, ChordMode::seventh);
    state.chordMode = ChordMode::off;
    EXPECT_EQ(state, PerformanceState());
}

RC_GTEST_PROP(PerformanceStateCodingProperties, EncodedThenDecodedIsTheSame, ()) {
    const auto state = *wildState();
    RC_ASSERT(PerformanceStateCoding::decode(PerformanceStateCoding::encode(state)) == state);
}

RC_GTEST_PROP(PerformanceStateCodingProperties, TheTextOfItDecodesToTheSame, ()) {
    const auto state = *wildState();
    RC_ASSERT(decoded(PerformanceStateCoding::encode(state).dump()) == state);
}

RC_GTEST_PROP(PerformanceStateCodingProperties, EveryFieldStoredOneByOneGivesTheSame, ()) {
    const auto state = *wildState();
    auto other = *wildState();
    const auto json = PerformanceStateCoding::encode(state);
    for (const auto& [key, value] : json.items()) {
        PerformanceStateCoding::decodeField(other, key, value);
    }
    RC_ASSERT(other == state);
}

} // namespace
} // namespace tavro
