#include "Platform/Linux/Settings/SettingsText.h"

#include "PerformanceModel/Character.h"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tavro::linuxos {
namespace {

using Value = UserDefaults::Value;
using Data = UserDefaults::Data;
using Values = std::map<std::string, Value>;

rc::Gen<std::string> joined(const rc::Gen<std::string>& piece) {
    return rc::gen::map(rc::gen::container<std::vector<std::string>>(piece),
                        [](const std::vector<std::string>& pieces) {
                            std::string bytes;
                            for (const auto& text : pieces) {
                                bytes += text;
                            }
                            return bytes;
                        });
}

/// Those that mean something in the file or are characters of several bytes.
rc::Gen<std::string> anyCharacter() {
    return rc::gen::oneOf(rc::gen::map(rc::gen::inRange(0, 0x80),
                                       [](int byte) { return std::string(1, static_cast<char>(byte)); }),
                          rc::gen::element<std::string>("\"", "\\", "\n", "\r", ":", "{", "}", ",", "data",
                                                        "true", " ", "\\x", std::string(1, '\0'), "ä", "字",
                                                        "🎹", "\u2028"));
}

rc::Gen<std::string> anyText() {
    return joined(anyCharacter());
}

rc::Gen<std::string> anyBytes() {
    return joined(rc::gen::oneOf(
        rc::gen::map(rc::gen::arbitrary<std::uint8_t>(),
                     [](std::uint8_t byte) { return std::string(1, static_cast<char>(byte)); }),
        rc::gen::element<std::string>("\xED\xA0\x80", "\xF4\x90\x80\x80", "\xC0\x80", "\xE5\xAD"),
        anyCharacter()));
}

rc::Gen<Value> anyValue() {
    return rc::gen::oneOf(
        rc::gen::map(anyText(), [](std::string text) { return Value(std::move(text)); }),
        rc::gen::map(rc::gen::arbitrary<std::int64_t>(), [](std::int64_t number) { return Value(number); }),
        rc::gen::map(anyBytes(), [](std::string bytes) { return Value(Data{std::move(bytes)}); }),
        rc::gen::map(rc::gen::arbitrary<bool>(), [](bool flag) { return Value(flag); }));
}

SettingsText anySettings() {
    SettingsText settings;
    for (auto& [key, value] : *rc::gen::container<std::vector<std::pair<std::string, Value>>>(
             rc::gen::pair(anyText(), anyValue()))) {
        settings.values[key] = value;
    }
    return settings;
}

void expectRead(const std::string& text, const Values& expected) {
    const auto settings = SettingsText::parse(text);
    EXPECT_TRUE(settings.isWhole) << text;
    EXPECT_TRUE(settings.values == expected) << text;
}

void expectBroken(const std::string& text, const Values& expected) {
    const auto settings = SettingsText::parse(text);
    EXPECT_FALSE(settings.isWhole) << text;
    EXPECT_TRUE(settings.values == expected) << text;
}

RC_GTEST_PROP(SettingsText, readsWhatItWrites, ()) {
    const auto settings = anySettings();
    const auto read = SettingsText::parse(settings.format().value_or(""));
    RC_ASSERT(read.isWhole);
    RC_ASSERT(read.values == settings.values);
}

RC_GTEST_PROP(SettingsText, neverMakesAnotherValueOfATruncatedText, ()) {
    const auto settings = anySettings();
    const auto text = settings.format().value_or("");
    const auto read = SettingsText::parse(text.substr(0, *rc::gen::inRange<std::size_t>(0, text.size() + 1)));
    for (const auto& [key, value] : read.values) {
        RC_ASSERT(settings.values.contains(key));
        RC_ASSERT(settings.values.at(key) == value);
    }
}

RC_GTEST_PROP(SettingsText, isAlwaysUtf8, ()) {
    RC_ASSERT(charactersOf(anySettings().format().value_or("\xFF")).has_value());
}

RC_GTEST_PROP(SettingsText, readsAnythingWithoutHarm, ()) {
    const auto rest = *anyBytes();
    const auto read = SettingsText::parse("{\"kept\":true,\"next\":false" + rest);
    RC_ASSERT(read.values.contains("kept"));
    const auto again = SettingsText::parse(read.format().value_or(""));
    RC_ASSERT(again.isWhole);
    RC_ASSERT(again.values == read.values);
}

TEST(SettingsText, isJsonInTheOrderOfItsKeys) {
    const SettingsText settings{.values = {{"on", true},
                                           {"off", false},
                                           {"count", std::int64_t{-3}},
                                           {"A.text", "a \"b\"\n\\\tÄ"},
                                           {"json", Data{R"({"key":"^"})"}},
                                           {"bytes", Data{"\x01\xFF"}}}};
    EXPECT_EQ(settings.format(), R"({
    "A.text": "a \"b\"\n\\\tÄ",
    "bytes": {
        "data": [
            1,
            255
        ]
    },
    "count": -3,
    "json": {
        "data": "{\"key\":\"^\"}"
    },
    "off": false,
    "on": true
}
)");
}

TEST(SettingsText, hasNoFormForATextOrAKeyThatIsNotUtf8) {
    EXPECT_EQ((SettingsText{.values = {{"key", "\xFF"}}}).format(), std::nullopt);
    EXPECT_EQ((SettingsText{.values = {{"\xED\xA0\x80", true}}}).format(), std::nullopt);
}

TEST(SettingsText, keepsAVeryLongValue) {
    std::string longText;
    for (int i = 0; i < 1'000'000; ++i) {
        longText += i % 3 == 0 ? "é" : "\"";
    }
    const SettingsText settings{.values = {{"long", longText}, {"data", Data{std::string(3'000'000, '\0')}}}};
    EXPECT_TRUE(SettingsText::parse(settings.format().value_or("")).values == settings.values);
}

TEST(SettingsText, readsWhatAnEditorMakesOfIt) {
    expectRead("\xEF\xBB\xBF \r\n{ \"c\" :{\"data\":\"d\"},\r\n\t\"b\":true, \"a\":\"\\u0078\" }\r\n",
               {{"a", "x"}, {"b", true}, {"c", Data{"d"}}});
}

TEST(SettingsText, keepsEveryInteger) {
    constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();
    expectRead(R"({"a":-9223372036854775808,"b":9223372036854775807,"c":0})",
               {{"a", smallest}, {"b", largest}, {"c", std::int64_t{0}}});
}

TEST(SettingsText, takesTheLastOfSeveralValues) {
    expectRead(R"({"a":true,"a":"x"})", {{"a", "x"}});
}

TEST(SettingsText, isWholeWithoutAnything) {
    expectRead("", {});
    expectRead(" \r\n", {});
    expectRead("{}", {});
}

TEST(SettingsText, leavesOutWhatIsNoValue) {
    for (const auto* const value :
         {"null", "1.5", "1e3", "9223372036854775808", "-9223372036854775809", "[]", "[\"data\"]", "{}",
          R"({"data":true})", R"({"data":1})", R"({"data":[256]})", R"({"data":[-1]})", R"({"data":["a"]})",
          R"({"data":"x","more":1})", R"({"Data":"x"})", R"({"data":{"data":"x"}})",
          R"({"x":{"before":false}})"}) {
        expectBroken(std::string(R"({"before":true,"a":)") + value + R"(,"after":false})",
                     {{"before", true}, {"after", false}});
    }
}

TEST(SettingsText, keepsWhatStandsBeforeAFault) {
    for (const auto* const rest : {"", ",", ",\"b\"", ",\"b\":", ",\"b\":\"x", ",\"b\":12", ",\"b\":tru",
                                   ",\"b\":{\"data\":\"x\"", ",\"b\":{\"data\":\"x\"}"}) {
        expectBroken(std::string(R"({"first":"text","a":true,"c":1)") + rest,
                     std::string(rest).starts_with(",\"b\"")
                         ? Values{{"first", "text"}, {"a", true}, {"c", std::int64_t{1}}}
                         : Values{{"first", "text"}, {"a", true}});
    }
    expectBroken(R"({"a":true}})", {{"a", true}});
    expectBroken(R"({"a":true,})", {});
    expectBroken(std::string("{\"a\":true}\0", 11), {{"a", true}});
    expectBroken(std::string("{\"a\":true,\"b\":\"\xFF\"}"), {{"a", true}});
}

TEST(SettingsText, isOneObject) {
    for (const auto* const text :
         {"true", "\"a\"", "1", "[]", "[true]", "[{\"a\":true}]", "[\"a\",true]", "nonsense"}) {
        expectBroken(text, {});
    }
    expectBroken(std::string(100'000, '['), {});
}

} // namespace
} // namespace tavro::linuxos
