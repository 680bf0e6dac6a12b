#include "Platform/Linux/Settings/SettingsText.h"

#include "PerformanceModel/Character.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tavro::linuxos {
namespace {

using Value = UserDefaults::Value;
using Data = UserDefaults::Data;
using Values = std::map<std::string, Value>;

rc::Gen<std::string> anyBytes() {
    // Besides whatever bytes there are, those that mean something in the file or are characters of several.
    const auto piece = rc::gen::oneOf(
        rc::gen::map(rc::gen::arbitrary<std::uint8_t>(),
                     [](std::uint8_t byte) { return std::string(1, static_cast<char>(byte)); }),
        rc::gen::element<std::string>("\"", "\\", "\n", "\r", "=", "[Settings]\n", ";", "data ", "true", " ",
                                      "\\x", std::string(1, '\0'), "ä", "字", "🎹", "\u2028", "\xED\xA0\x80",
                                      "\xF4\x90\x80\x80", "\xC0\x80", "\xE5\xAD"));
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string>& pieces) {
                            std::string bytes;
                            for (const auto& text : pieces) {
                                bytes += text;
                            }
                            return bytes;
                        });
}

rc::Gen<Value> anyValue() {
    return rc::gen::oneOf(
        rc::gen::map(anyBytes(), [](std::string text) { return Value(std::move(text)); }),
        rc::gen::map(anyBytes(), [](std::string bytes) { return Value(Data{std::move(bytes)}); }),
        rc::gen::map(rc::gen::arbitrary<bool>(), [](bool flag) { return Value(flag); }));
}

SettingsText anySettings() {
    SettingsText settings;
    for (auto& [key, value] : *rc::gen::container<std::vector<std::pair<std::string, Value>>>(
             rc::gen::pair(anyBytes(), anyValue()))) {
        settings.values[key] = value;
    }
    return settings;
}

SettingsText parsed(const std::string& lines) {
    return SettingsText::parse("[Settings]\n" + lines);
}

void expectRead(const std::string& lines, const Values& expected) {
    const auto settings = parsed(lines);
    EXPECT_TRUE(settings.isWhole) << lines;
    EXPECT_TRUE(settings.values == expected) << lines;
}

void expectBroken(const std::string& line) {
    const auto settings = parsed("before=true\n" + line + "\nafter=false\n");
    EXPECT_FALSE(settings.isWhole) << line;
    EXPECT_TRUE(settings.values == (Values{{"before", true}, {"after", false}})) << line;
}

RC_GTEST_PROP(SettingsText, readsWhatItWrites, ()) {
    const auto settings = anySettings();
    const auto read = SettingsText::parse(settings.format());
    RC_ASSERT(read.isWhole);
    RC_ASSERT(read.values == settings.values);
}

RC_GTEST_PROP(SettingsText, neverMakesAnotherValueOfATruncatedText, ()) {
    const auto settings = anySettings();
    const auto text = settings.format();
    const auto read = SettingsText::parse(text.substr(0, *rc::gen::inRange<std::size_t>(0, text.size() + 1)));
    for (const auto& [key, value] : read.values) {
        RC_ASSERT(settings.values.contains(key));
        RC_ASSERT(settings.values.at(key) == value);
    }
}

RC_GTEST_PROP(SettingsText, isAlwaysUtf8, ()) {
    RC_ASSERT(charactersOf(anySettings().format()).has_value());
}

RC_GTEST_PROP(SettingsText, readsAnythingWithoutHarm, ()) {
    const auto rest = *anyBytes();
    const auto read = SettingsText::parse("[Settings]\nkept=true\n" + rest);
    const auto again = SettingsText::parse(read.format());
    RC_ASSERT(again.isWhole);
    RC_ASSERT(again.values == read.values);
}

TEST(SettingsText, hasOneReadableLineForEachValue) {
    const SettingsText settings{.values = {{"on", true},
                                           {"off", false},
                                           {"A.text-1_v1", "a \"b\"\n\\\t\rÄ"},
                                           {"a key", "\x01\x7F\xFF"},
                                           {"json", Data{R"({"key":"^"})"}}}};
    EXPECT_EQ(settings.format(), "; Written by TAVRO, which keeps the values but not comments.\n"
                                 "[Settings]\n"
                                 "A.text-1_v1=\"a \\\"b\\\"\\n\\\\\\t\\rÄ\"\n"
                                 "\"a key\"=\"\\x01\\x7f\\xff\"\n"
                                 "json=data \"{\\\"key\\\":\\\"^\\\"}\"\n"
                                 "off=false\n"
                                 "on=true\n");
}

TEST(SettingsText, keepsAVeryLongValue) {
    std::string longText;
    for (int i = 0; i < 1'000'000; ++i) {
        longText += i % 3 == 0 ? "é" : "\"";
    }
    const SettingsText settings{.values = {{"long", longText}, {"data", Data{std::string(3'000'000, '\0')}}}};
    EXPECT_TRUE(SettingsText::parse(settings.format()).values == settings.values);
}

TEST(SettingsText, readsWhatAnEditorMakesOfIt) {
    const SettingsText expected{.values = {{"a", "x"}, {"b", true}, {"c", Data{"d"}}}};
    const auto read = SettingsText::parse("\xEF\xBB\xBF; comment\r\n# another\r\n\r\n  [Settings]\t\r\n"
                                          "a = \"x\" \r\n\tb=true\r\n\"c\" =data   \"d\"");
    EXPECT_TRUE(read.isWhole);
    EXPECT_TRUE(read.values == expected.values);
}

TEST(SettingsText, takesTheLastOfSeveralValues) {
    expectRead("a=true\na=\"x\"\n", {{"a", "x"}});
}

TEST(SettingsText, isWholeWithoutAnything) {
    EXPECT_TRUE(SettingsText::parse("").isWhole);
    expectRead("", {});
}

TEST(SettingsText, leavesOutLinesThatCannotBeRead) {
    for (const auto* const line :
         {"a",         "a=",         "a=tru",       "a=True",           "a=1",
          "a=text",    "a=\"",       "a=\"text",    "a=\"text\\\"",     "a=\"text\" more",
          "a=\"\\q\"", "a=\"\\x4\"", "a=\"\\x4g\"", "a=\"\\xAB\"",      "a=\"\\",
          "a=data",    "a=data \"x", "a=data x",    "a=dataless \"x\"", "=true",
          "a b=true",  "ä=true",     "\"a=true",    "\"a\"b=true",      "'a'=true",
          "a==true"}) {
        expectBroken(line);
    }
    expectBroken(std::string(1, '\0'));
}

TEST(SettingsText, readsItsOwnSectionOnly) {
    const auto read =
        SettingsText::parse("a=true\n[Other]\nb=true\n[Settings]\nc=true\n[settings]\nd=true\n");
    EXPECT_FALSE(read.isWhole);
    EXPECT_TRUE(read.values == (Values{{"c", true}}));
}

} // namespace
} // namespace tavro::linuxos
