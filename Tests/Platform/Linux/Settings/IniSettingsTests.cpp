#include "Platform/Linux/Settings/IniSettings.h"

#include "Platform/Linux/Settings/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <fstream>
#include <string>
#include <vector>

namespace tavro::linuxos {
namespace {

using Data = UserDefaults::Data;
using Values = IniSettings::Values;

Values parsed(const std::string& lines) {
    return IniSettings::parse("[Settings]\n" + lines);
}

void expectBroken(const std::string& line) {
    EXPECT_TRUE(parsed("before=true\n" + line + "\nafter=false\n") ==
                (Values{{"before", true}, {"after", false}}))
        << line;
}

TEST(IniSettings, readsWhatEarlierVersionsWrote) {
    const auto values = IniSettings::parse("; Written by TAVRO, which keeps the values but not comments.\n"
                                           "[Settings]\n"
                                           "A.text-1_v1=\"a \\\"b\\\"\\n\\\\\\t\\rÄ\"\n"
                                           "\"a key\"=\"\\x01\\x7f\"\n"
                                           "json=data \"{\\\"key\\\":\\\"^\\\"}\\xff\"\n"
                                           "off=false\n"
                                           "on=true\n");
    EXPECT_TRUE(values == (Values{{"on", true},
                                  {"off", false},
                                  {"A.text-1_v1", "a \"b\"\n\\\t\rÄ"},
                                  {"a key", "\x01\x7F"},
                                  {"json", Data{"{\"key\":\"^\"}\xFF"}}}));
}

TEST(IniSettings, readsWhatAnEditorMakesOfIt) {
    const auto read = IniSettings::parse("\xEF\xBB\xBF; comment\r\n# another\r\n\r\n  [Settings]\t\r\n"
                                         "a = \"x\" \r\n\tb=true\r\n\"c\" =data   \"d\"");
    EXPECT_TRUE(read == (Values{{"a", "x"}, {"b", true}, {"c", Data{"d"}}}));
}

TEST(IniSettings, takesTheLastOfSeveralValues) {
    EXPECT_TRUE(parsed("a=true\na=\"x\"\n") == (Values{{"a", "x"}}));
}

TEST(IniSettings, neverMakesAnotherValueOfATruncatedText) {
    const std::string text = "[Settings]\na=\"one\\\\\"\nb=data \"two\\x41\"\nc=true\n";
    const auto whole = IniSettings::parse(text);
    ASSERT_EQ(whole.size(), 3U);
    for (std::size_t length = 0; length < text.size(); ++length) {
        for (const auto& [key, value] : IniSettings::parse(text.substr(0, length))) {
            EXPECT_TRUE(whole.contains(key) && whole.at(key) == value) << length;
        }
    }
}

RC_GTEST_PROP(IniSettings, readsAnythingWithoutHarm, (const std::vector<std::uint8_t>& rest)) {
    const auto read = parsed("kept=true\n" + std::string(rest.begin(), rest.end()));
    RC_ASSERT(read.contains("kept") || !rest.empty());
}

TEST(IniSettings, leavesOutLinesThatCannotBeRead) {
    for (const auto* const line :
         {"a",         "a=",         "a=tru",       "a=True",           "a=1",
          "a=text",    "a=\"",       "a=\"text",    "a=\"text\\\"",     "a=\"text\" more",
          "a=\"\\q\"", "a=\"\\x4\"", "a=\"\\x4g\"", "a=\"\\xAB\"",      "a=\"\\",
          "a=data",    "a=data \"x", "a=data x",    "a=dataless \"x\"", "=true",
          "a b=true",  "ä=true",     "\"a=true",    "\"a\"b=true",      "'a'=true",
          "a==true",   "a=\"\\xff\""}) {
        expectBroken(line);
    }
    expectBroken(std::string(1, '\0'));
}

TEST(IniSettings, readsItsOwnSectionOnly) {
    EXPECT_TRUE(IniSettings::parse("a=true\n[Other]\nb=true\n[Settings]\nc=true\n[settings]\nd=true\n") ==
                (Values{{"c", true}}));
}

TEST(IniSettings, areReadFromTheirFileAndNeverWritten) {
    const TemporaryFolder folder;
    const auto file = folder.path() / "old.ini";
    IniSettings settings(file);
    EXPECT_EQ(settings.value("key"), std::nullopt);
    std::ofstream(file) << "[Settings]\nkey=true\n";
    EXPECT_EQ(settings.boolean("key"), true);
    EXPECT_FALSE(settings.setValue("key", false));
    EXPECT_EQ(settings.boolean("key"), true);
    EXPECT_EQ(settings.suite("old"), nullptr);
    EXPECT_EQ(IniSettings(folder.path()).value("key"), std::nullopt);
    EXPECT_THROW((void)IniSettings::read(folder.path()), std::system_error);
}

} // namespace
} // namespace tavro::linuxos
