#include "PerformanceModel/TAVROPreset.h"

#include "PerformanceModel/PerformanceStateCoding.h"

#include <nlohmann/json.hpp>

namespace tavro {

namespace {

const nlohmann::ordered_json& required(const nlohmann::ordered_json& json, const std::string& key) {
    const auto found = json.find(key);
    return found == json.end() ? throw DecodingError(key, "this key in a preset", nullptr) : *found;
}

} // namespace

const TAVROPreset& TAVROPreset::defaultPreset() {
    static const TAVROPreset preset{.id = "default", .name = "Default", .state = {}, .isBuiltIn = true};
    return preset;
}

nlohmann::ordered_json TAVROPreset::encode() const {
    return {
        {"id", id},
        {"name", name},
        {"state", PerformanceStateCoding::encode(state)},
        {"isBuiltIn", isBuiltIn},
    };
}

TAVROPreset TAVROPreset::decode(const nlohmann::ordered_json& json) {
    if (!json.is_object()) {
        throw DecodingError({}, "a preset object", json);
    }
    return {
        .id = JsonDecoding::text("id", required(json, "id")),
        .name = JsonDecoding::text("name", required(json, "name")),
        .state = PerformanceStateCoding::decode(required(json, "state")),
        .isBuiltIn = JsonDecoding::flag("isBuiltIn", required(json, "isBuiltIn")),
    };
}

} // namespace tavro
