#include "PerformanceModel/PerformanceStateCoding.h"

#include "PerformanceModel/ArbitraryPerformanceState.h"

#include <nlohmann/json.hpp>

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

namespace tavro {
namespace {

using testing::HasSubstr;
using Json = nlohmann::ordered_json;

std::optional<DecodingError> errorOf(const Json& json) {
    try {
        static_cast<void>(PerformanceStateCoding::decode(json));
    } catch (const DecodingError& error) {
        return error;
    }
    return std::nullopt;
}

/// The error is there, knows its key and what was expected, and its sentence has both.
void expectError(const Json& json, const std::string& key, const std::string& expected) {
    const auto error = errorOf(json);
    ASSERT_TRUE(error) << json;
    EXPECT_EQ(error->key(), key) << json;
    EXPECT_THAT(error->expected(), HasSubstr(expected)) << json;
    EXPECT_THAT(error->what(), HasSubstr(key));
    EXPECT_THAT(error->what(), HasSubstr(expected));
}

const std::vector<std::string> integerKeys{"rootSemitone",      "baseMidiC",         "globalOctaveOffset",
                                           "velocity",          "humanizeVelocity",  "strumMilliseconds",
                                           "voicingComplexity", "maxChordNotes",     "midiChannel",
                                           "bassOctaveDown",    "melodyOctaveOffset"};
const std::vector<std::string> flagKeys{"holdMode", "smartHoldMode", "bassNoteEnabled", "splitModeEnabled"};

class IntegerKeyError : public testing::TestWithParam<std::string> {};

TEST_P(IntegerKeyError, IsReportedForEverythingButAnInteger) {
    for (const char* wrong : {"60.5", "-0.25", "1e30", "-1e30", "9223372036854775808", "1e19",
                              "18446744073709551615", "\"60\"", "true", "false", "[60]", "{\"a\":60}"}) {
        expectError(Json{{GetParam(), Json::parse(wrong)}}, GetParam(), "integer");
    }
}

INSTANTIATE_TEST_SUITE_P(AllKeys, IntegerKeyError, testing::ValuesIn(integerKeys),
                         [](const auto& test) { return test.param; });

class FlagKeyError : public testing::TestWithParam<std::string> {};

TEST_P(FlagKeyError, IsReportedForEverythingButTrueAndFalse) {
    for (const char* wrong : {"0", "1", "1.0", "\"true\"", "\"\"", "[]", "[true]", "{}"}) {
        expectError(Json{{GetParam(), Json::parse(wrong)}}, GetParam(), "true or false");
    }
}

INSTANTIATE_TEST_SUITE_P(AllKeys, FlagKeyError, testing::ValuesIn(flagKeys),
                         [](const auto& test) { return test.param; });

TEST(ScaleNameError, IsReportedForEverythingButAText) {
    for (const char* wrong : {"1", "1.5", "true", "[\"Major\"]", "{}"}) {
        expectError(Json{{"scaleName", Json::parse(wrong)}}, "scaleName", "text");
    }
}

TEST(ChordModeError, ListsTheNamesThatAreExpected) {
    for (const char* wrong : {"\"seventh\"", "\"\"", "\"Seventh \"", "\"Thirteenth\"", "1", "false", "[]"}) {
        for (const char* name : {"Off", "Triad", "Seventh", "Ninth", "Eleventh"}) {
            expectError(Json{{"chordMode", Json::parse(wrong)}}, "chordMode", name);
        }
    }
}

TEST(KeyboardLayoutError, ListsTheNamesThatAreExpected) {
    for (const char* wrong : {"\"qwertz\"", "\"\"", "\"AZERTY\"", "0", "true", "{}"}) {
        for (const char* name : {"QWERTZ", "QWERTY"}) {
            expectError(Json{{"keyboardLayout", Json::parse(wrong)}}, "keyboardLayout", name);
        }
    }
}

TEST(PerformanceStateDecodingError, ForAValueThatIsNoObjectNamesNoKey) {
    for (const char* wrong : {"null", "1", "\"velocity\"", "true", "[]", "[{\"velocity\":1}]"}) {
        const auto error = errorOf(Json::parse(wrong));
        ASSERT_TRUE(error) << wrong;
        EXPECT_EQ(error->key(), "");
        EXPECT_THAT(error->what(), HasSubstr("expected an object"));
    }
}

TEST(PerformanceStateDecodingError, IsThatOfTheFirstWrongKeyInTheOrderOfTheFields) {
    expectError(Json::parse(R"({"keyboardLayout":1,"holdMode":1,"velocity":"x"})"), "velocity", "integer");
}

TEST(PerformanceStateDecodingError, ReadsAsOneSentence) {
    EXPECT_STREQ(errorOf(Json{{"velocity", "loud"}})->what(),
                 R"("velocity": expected an integer, found "loud")");
    EXPECT_STREQ(errorOf(Json{{"holdMode", Json::array()}})->what(),
                 R"("holdMode": expected true or false, found an array)");
}

TEST(PerformanceStateDecodingError, StaysShortAndDoesNotFailOverBrokenText) {
    EXPECT_LT(std::string(errorOf(Json{{"velocity", std::string(100000, 'x')}})->what()).size(), 200U);
    EXPECT_TRUE(errorOf(Json{{"velocity", "\xFF\xFE"}}));
}

TEST(PerformanceStateFieldError, LeavesTheStateAsItWas) {
    PerformanceState state;
    EXPECT_THROW(PerformanceStateCoding::decodeField(state, "velocity", "loud"), DecodingError);
    EXPECT_THROW(PerformanceStateCoding::decodeField(state, "chordMode", "seventh"), DecodingError);
    EXPECT_EQ(state, PerformanceState());
}

TEST(PerformanceStateFieldError, NamesTheSettingThatDoesNotExist) {
    PerformanceState state;
    for (const char* unknown : {"Velocity", "", "velocity "}) {
        try {
            PerformanceStateCoding::decodeField(state, unknown, 1);
            ADD_FAILURE() << unknown;
        } catch (const DecodingError& error) {
            EXPECT_EQ(error.key(), unknown);
        }
    }
    EXPECT_EQ(state, PerformanceState());
}

} // namespace
} // namespace tavro
