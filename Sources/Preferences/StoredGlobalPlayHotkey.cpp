#include "Preferences/StoredGlobalPlayHotkey.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"

#include <nlohmann/json.hpp>

namespace tavro {

using Json = nlohmann::ordered_json;

std::string StoredGlobalPlayHotkey::encode() const {
    Json json{{"key", key}};
    if (keyCode) {
        json["keyCode"] = *keyCode;
    }
    json["modifiersRawValue"] = modifiersRawValue;
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::optional<StoredGlobalPlayHotkey> StoredGlobalPlayHotkey::decode(std::string_view json) {
    try {
        const auto parsed = BoundedJson::parse(json);
        if (!parsed.is_object() || !parsed.contains("key") || !parsed.contains("modifiersRawValue")) {
            return std::nullopt;
        }
        StoredGlobalPlayHotkey decoded{
            .key = JsonDecoding::text("key", parsed["key"]),
            .keyCode = std::nullopt,
            .modifiersRawValue = JsonDecoding::integer("modifiersRawValue", parsed["modifiersRawValue"])};
        // A null is how some writers say that there is none.
        if (const auto found = parsed.find("keyCode"); found != parsed.end() && !found->is_null()) {
            decoded.keyCode = JsonDecoding::integer("keyCode", *found);
        }
        return decoded;
    } catch (const JsonTextError&) {
        return std::nullopt;
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

} // namespace tavro
