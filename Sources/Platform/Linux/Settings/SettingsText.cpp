#include "Platform/Linux/Settings/SettingsText.h"

#include "PerformanceModel/Text.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <utility>
#include <variant>
#include <vector>

namespace tavro::linuxos {

namespace {

using Json = nlohmann::json;
using Value = UserDefaults::Value;
using Data = UserDefaults::Data;

constexpr auto dataTag = "data";

std::optional<Value> dataOf(const Json& content) {
    if (content.is_string()) {
        return Data{content.get<std::string>()};
    }
    if (!content.is_array()) {
        return std::nullopt;
    }
    Data data;
    for (const auto& byte : content) {
        if (!byte.is_number_unsigned() || !std::in_range<std::uint8_t>(byte.get<std::uint64_t>())) {
            return std::nullopt;
        }
        data.bytes += static_cast<char>(byte.get<std::uint8_t>());
    }
    return data;
}

std::optional<Value> valueOf(const Json& json) {
    switch (json.type()) {
    case Json::value_t::boolean:
        return json.get<bool>();
    case Json::value_t::string:
        return json.get<std::string>();
    case Json::value_t::number_unsigned:
        return std::in_range<std::int64_t>(json.get<std::uint64_t>())
                   ? std::optional<Value>(json.get<std::int64_t>())
                   : std::nullopt;
    case Json::value_t::number_integer:
        return json.get<std::int64_t>();
    case Json::value_t::object:
        return json.size() == 1 && json.contains(dataTag) ? dataOf(json[dataTag]) : std::nullopt;
    default:
        return std::nullopt;
    }
}

/// Takes the values from the parser one by one, so that those before a fault are not lost with it.
class Collector {
public:
    bool take(int depth, Json::parse_event_t event, const Json& parsed) {
        using Event = Json::parse_event_t;
        if (depth == 0) {
            isObject_ = isObject_ || event == Event::object_start;
            isEnded_ = event == Event::object_end;
        }
        if ((depth == 1 && event == Event::key) || isEnded_) {
            store();
        }
        if (depth == 1 && event == Event::key) {
            key_ = parsed.get<std::string>();
        } else if (depth == 1 && isObject_ && event != Event::object_start && event != Event::array_start) {
            // Only what follows tells that a number has not been cut off.
            read_ = Read{valueOf(parsed)};
        }
        return true;
    }

    SettingsText result;

private:
    struct Read {
        std::optional<Value> value;
    };

    void store() {
        if (auto read = std::exchange(read_, std::nullopt)) {
            if (read->value) {
                result.values.insert_or_assign(key_, *std::move(read->value));
            } else {
                result.isWhole = false;
            }
        }
    }

    bool isObject_ = false;
    bool isEnded_ = false;
    std::string key_;
    std::optional<Read> read_;
};

Json jsonOf(const Data& data) {
    Json content = data.bytes;
    if (!charactersOf(data.bytes)) {
        content = std::vector<std::uint8_t>(data.bytes.begin(), data.bytes.end());
    }
    return Json::object({{dataTag, std::move(content)}});
}

Json jsonOf(const auto& plain) {
    return plain;
}

} // namespace

SettingsText SettingsText::parse(std::string_view text) {
    if (trimmed(text).empty()) {
        return {};
    }
    Collector collector;
    const auto take = [&](int depth, Json::parse_event_t event, const Json& parsed) {
        return collector.take(depth, event, parsed);
    };
    const auto json = Json::parse(text.begin(), text.end(), take, false);
    // The parser takes a NUL byte for the end of the text, whatever follows.
    collector.result.isWhole =
        collector.result.isWhole && json.is_object() && text.find('\0') == std::string_view::npos;
    return std::move(collector.result);
}

std::optional<std::string> SettingsText::format() const {
    auto json = Json::object();
    for (const auto& [key, value] : values) {
        json[key] = std::visit([](const auto& held) { return jsonOf(held); }, value);
    }
    try {
        return json.dump(4) + '\n';
    } catch (const Json::type_error&) {
        return std::nullopt;
    }
}

} // namespace tavro::linuxos
