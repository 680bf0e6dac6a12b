#include "PerformanceModel/BoundedJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

namespace tavro {
namespace {

using Json = nlohmann::ordered_json;
using Kind = JsonTextError::Kind;

struct Refusal {
    Kind kind;
    std::string reason;

    friend bool operator==(const Refusal&, const Refusal&) = default;

    friend std::ostream& operator<<(std::ostream& out, const Refusal& refusal) {
        return out << static_cast<int>(refusal.kind) << " \"" << refusal.reason << "\"";
    }
};

Refusal refusalOf(std::string_view text) {
    try {
        const auto json = BoundedJson::parse(text);
        ADD_FAILURE() << "taken: " << json.dump(-1, ' ', true, Json::error_handler_t::replace).substr(0, 200);
    } catch (const JsonTextError& error) {
        return {error.kind(), error.what()};
    }
    return {};
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t count = 0; count < times; ++count) {
        result += text;
    }
    return result;
}

std::string nested(std::size_t depth) {
    return repeated("[", depth) + repeated("]", depth);
}

std::string objectWithKeys(std::size_t count) {
    std::string text = "{";
    for (std::size_t number = 0; number < count; ++number) {
        text += (number == 0 ? "\"" : ",\"") + std::to_string(number) + "\":0";
    }
    return text + "}";
}

TEST(BoundedJson, keepsValuesAndTheOrderOfTheirKeys) {
    EXPECT_EQ(BoundedJson::parse(R"( {"b":[1,2.5,null,true],"a":{"ä":"ö"}} )").dump(),
              R"({"b":[1,2.5,null,true],"a":{"ä":"ö"}})");
    EXPECT_EQ(BoundedJson::parse("7"), Json(7));
}

TEST(BoundedJson, skipsAByteOrderMark) {
    EXPECT_EQ(BoundedJson::parse("\xEF\xBB\xBF{}"), Json::object());
    EXPECT_EQ(refusalOf("\xEF\xBB\xBF"), (Refusal{Kind::empty, "empty"}));
    EXPECT_EQ(refusalOf("\xEF\xBB\xBF x"), (Refusal{Kind::notJson, "not JSON at line 1, column 2"}));
}

TEST(BoundedJson, refusesTextsWithoutAnything) {
    EXPECT_EQ(refusalOf(""), (Refusal{Kind::empty, "empty"}));
    EXPECT_EQ(refusalOf(" \r\n\t"), (Refusal{Kind::empty, "empty"}));
}

TEST(BoundedJson, tellsWhereATextEndsTooEarly) {
    EXPECT_EQ(refusalOf("{"),
              (Refusal{Kind::notJson, "not JSON: the text ends too early, at line 1, column 2"}));
    EXPECT_EQ(refusalOf("{\n  \"name\": \"Ä"),
              (Refusal{Kind::notJson, "not JSON: the text ends too early, at line 2, column 13"}));
    EXPECT_EQ(refusalOf("[1,\n"),
              (Refusal{Kind::notJson, "not JSON: the text ends too early, at line 2, column 1"}));
}

TEST(BoundedJson, tellsWhereATextIsNoJson) {
    EXPECT_EQ(refusalOf("x").reason, "not JSON at line 1, column 1");
    EXPECT_EQ(refusalOf("{\"a\": 1,\n \"b\" 2}").reason, "not JSON at line 2, column 6");
    EXPECT_EQ(refusalOf("[\"ä\" x]").reason, "not JSON at line 1, column 6");
    EXPECT_EQ(refusalOf("{} {}").reason, "not JSON at line 1, column 4");
    EXPECT_EQ(refusalOf("[1,]").reason, "not JSON at line 1, column 4");
    EXPECT_EQ(refusalOf(R"(["\ud800"])").kind, Kind::notJson);
    EXPECT_EQ(refusalOf("[1e999]"), (Refusal{Kind::notJson, "a number is too large"}));
}

TEST(BoundedJson, aZeroByteEndsNothing) {
    EXPECT_EQ(refusalOf(std::string("{}\0", 3)).reason, "not JSON at line 1, column 3");
    EXPECT_EQ(refusalOf(std::string("{}\0{", 4)).reason, "not JSON at line 1, column 3");
    EXPECT_EQ(refusalOf(std::string(3, '\0')).reason, "not JSON at line 1, column 1");
}

TEST(BoundedJson, refusesWhatIsNotUtf8) {
    for (const auto* text : {"\xFF\xFE{", "\"\xE4\"", "\"\xC0\x80\"", "\"\xED\xA0\x80\"", "{} \x80"}) {
        EXPECT_EQ(refusalOf(text), (Refusal{Kind::notUtf8, "not UTF-8"})) << text;
    }
}

TEST(BoundedJson, nestingHasABound) {
    EXPECT_TRUE(BoundedJson::parse(nested(BoundedJson::deepest)).is_array());
    const Refusal tooDeep{Kind::tooDeep, "objects and arrays more than 32 deep in each other"};
    EXPECT_EQ(refusalOf(nested(BoundedJson::deepest + 1)), tooDeep);
    constexpr std::size_t enoughForAnyStack = 1'000'000;
    EXPECT_EQ(refusalOf(nested(enoughForAnyStack)), tooDeep);
    EXPECT_EQ(refusalOf(repeated("[", enoughForAnyStack)), tooDeep);
    EXPECT_EQ(refusalOf(repeated("{\"a\":", enoughForAnyStack)), tooDeep);
    EXPECT_EQ(refusalOf(repeated("[{\"a\":", enoughForAnyStack)), tooDeep);
}

TEST(BoundedJson, anObjectHasABoundOfItsOwn) {
    const auto largest = objectWithKeys(BoundedJson::mostKeys);
    EXPECT_EQ(BoundedJson::parse(largest).size(), BoundedJson::mostKeys);
    EXPECT_EQ(BoundedJson::parse("[" + largest + "," + largest + "]").size(), 2U);
    EXPECT_EQ(BoundedJson::parse(R"({"a":)" + largest + R"(,"b":)" + largest + "}").size(), 2U);
    const Refusal tooMany{Kind::tooManyKeys, "an object with more than 1000 keys"};
    EXPECT_EQ(refusalOf(objectWithKeys(BoundedJson::mostKeys + 1)), tooMany);
    // The objects inside do not start the count of the one around them anew.
    EXPECT_EQ(refusalOf(R"({"a":{},)" + largest.substr(1)), tooMany);
}

} // namespace
} // namespace tavro
