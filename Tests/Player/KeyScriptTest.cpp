#include "Player/KeyScript.h"

#include <gtest/gtest.h>

namespace tavro {
namespace {

std::string errorOf(std::string_view text) {
    try {
        (void)KeyScript::parse(text);
    } catch (const KeyScriptError& error) {
        return error.what();
    }
    return "no error";
}

TEST(KeyScript, skipsBlankLinesAndComments) {
    EXPECT_TRUE(KeyScript::parse("").commands.empty());
    EXPECT_TRUE(KeyScript::parse("\n  \n# down a\n\t# more\r\n").commands.empty());
}

TEST(KeyScript, readsEveryCommand) {
    const auto script = KeyScript::parse("\xEF\xBB\xBF"
                                         "at 10\r\ndown a\nup \xC3\xB6\nset velocity 64.0\n"
                                         "control holdBinding true\npanic\nshow\nquit");
    ASSERT_EQ(script.commands.size(), 8U);
    EXPECT_EQ(std::get<KeyScript::At>(script.commands[0]).milliseconds, 10);
    EXPECT_EQ(std::get<KeyScript::Down>(script.commands[1]).key, U'a');
    EXPECT_EQ(std::get<KeyScript::Up>(script.commands[2]).key, U'\u00F6');
    EXPECT_EQ(std::get<KeyScript::Set>(script.commands[3]).field, "velocity");
    EXPECT_EQ(std::get<KeyScript::Control>(script.commands[4]).value, 1);
    EXPECT_TRUE(std::holds_alternative<KeyScript::Panic>(script.commands[5]));
    EXPECT_TRUE(std::holds_alternative<KeyScript::Show>(script.commands[6]));
    EXPECT_TRUE(std::holds_alternative<KeyScript::Quit>(script.commands[7]));
}

TEST(KeyScript, composesDecomposedKeys) {
    const auto script = KeyScript::parse("down o\xCC\x88");
    EXPECT_EQ(std::get<KeyScript::Down>(script.commands.at(0)).key, U'\u00F6');
}

TEST(KeyScript, takesTheHashAsAKey) {
    const auto script = KeyScript::parse("down #");
    EXPECT_EQ(std::get<KeyScript::Down>(script.commands.at(0)).key, U'#');
}

struct WrongLine {
    std::string_view text;
    std::string_view error;
};

class WrongLines : public testing::TestWithParam<WrongLine> {};

TEST_P(WrongLines, areReportedWithNumberAndReason) {
    const std::string script = "show\n\n" + std::string(GetParam().text) + "\nshow";
    EXPECT_EQ(errorOf(script), "line 3: " + std::string(GetParam().error));
}

INSTANTIATE_TEST_SUITE_P(
    KeyScript, WrongLines,
    testing::Values(
        WrongLine{"dwn a",
                  "\"dwn\" is no command; there are at, down, up, set, control, panic, show and quit"},
        WrongLine{"down", "a key is exactly one character, not \"\""},
        WrongLine{"down ab", "a key is exactly one character, not \"ab\""},
        WrongLine{"up a b", "a key is exactly one character, not \"a b\""},
        WrongLine{"at", "at needs a whole number of milliseconds from 0 to 1000000000000, not \"\""},
        WrongLine{"at -1", "at needs a whole number of milliseconds from 0 to 1000000000000, not \"-1\""},
        WrongLine{"at 5x", "at needs a whole number of milliseconds from 0 to 1000000000000, not \"5x\""},
        WrongLine{
            "at 99999999999999999999",
            "at needs a whole number of milliseconds from 0 to 1000000000000, not \"99999999999999999999\""},
        WrongLine{"set", "a JSON value is missing"}, WrongLine{"set velocity", "a JSON value is missing"},
        WrongLine{"set velocity {", "\"{\" is not JSON"},
        WrongLine{"set velocity [[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[[",
                  "objects and arrays more than 32 deep in each other"},
        WrongLine{"set velocity \"64\"", "\"velocity\": expected an integer, found \"64\""},
        WrongLine{
            "set chordMode \"seventh\"",
            "\"chordMode\": expected one of \"Off\", \"Triad\", \"Seventh\", \"Ninth\", \"Eleventh\", found "
            "\"seventh\""},
        WrongLine{"set volume 3", "\"volume\": expected the name of a setting before this value, found 3"},
        WrongLine{"control hold true", "\"hold\" is no control"},
        WrongLine{"control holdBinding 1", "\"holdBinding\": expected true or false, found 1"},
        WrongLine{"control chordComplexityBinding true",
                  "\"chordComplexityBinding\": expected an integer, found true"},
        WrongLine{"panic now", "nothing may follow this command, found \"now\""},
        WrongLine{"down \xFF", "the text is not UTF-8"}));

TEST(KeyScript, refusesATimeThatGoesBack) {
    EXPECT_EQ(errorOf("at 9\nat 9\nat 8"), "line 3: the time cannot go back from 9 to 8 ms");
}

TEST(KeyScript, storesTheDefaultForNull) {
    EXPECT_EQ(errorOf("set velocity null"), "no error");
}

TEST(KeyScript, tellsTheLineAsANumber) {
    try {
        (void)KeyScript::parse("\nquit now");
        FAIL();
    } catch (const KeyScriptError& error) {
        EXPECT_EQ(error.line(), 2U);
    }
}

} // namespace
} // namespace tavro
