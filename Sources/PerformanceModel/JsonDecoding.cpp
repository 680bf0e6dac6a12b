#include "PerformanceModel/JsonDecoding.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <utility>

namespace tavro {

namespace {

using Json = nlohmann::ordered_json;

std::string describe(const Json& json) {
    constexpr std::size_t longestQuote = 40;
    switch (json.type()) {
    case Json::value_t::null:
        return "null";
    case Json::value_t::object:
        return "an object";
    case Json::value_t::array:
        return "an array";
    default:
        break;
    }
    // Invalid UTF-8 must not make the error fail in turn.
    const auto text = json.dump(-1, ' ', true, Json::error_handler_t::replace);
    return text.size() <= longestQuote ? text : text.substr(0, longestQuote) + "...";
}

std::string sentence(const std::string& key, const std::string& expected, const Json& found) {
    return (key.empty() ? std::string() : "\"" + key + "\": ") + "expected " + expected + ", found " +
           describe(found);
}

} // namespace

DecodingError::DecodingError(std::string key, std::string expected, const Json& found)
    : std::runtime_error(sentence(key, expected, found)), key_(std::move(key)),
      expected_(std::move(expected)) {}

std::int64_t JsonDecoding::integer(const std::string& key, const Json& json) {
    if (json.is_number_unsigned()) {
        const auto value = json.get<std::uint64_t>();
        if (std::in_range<std::int64_t>(value)) {
            return static_cast<std::int64_t>(value);
        }
    } else if (json.is_number_integer()) {
        return json.get<std::int64_t>();
    } else if (json.is_number_float()) {
        // 60.0 is the integer 60: other writers of the format do not keep the two apart.
        const auto value = json.get<double>();
        constexpr double limit = 9223372036854775808.0;
        if (value == std::trunc(value) && value >= -limit && value < limit) {
            return static_cast<std::int64_t>(value);
        }
    }
    throw DecodingError(key, "an integer", json);
}

bool JsonDecoding::flag(const std::string& key, const Json& json) {
    if (!json.is_boolean()) {
        throw DecodingError(key, "true or false", json);
    }
    return json.get<bool>();
}

const std::string& JsonDecoding::text(const std::string& key, const Json& json, const std::string& expected) {
    if (!json.is_string()) {
        throw DecodingError(key, expected, json);
    }
    return json.get_ref<const std::string&>();
}

} // namespace tavro
