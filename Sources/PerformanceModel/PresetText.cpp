#include "PerformanceModel/PresetText.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"

#include <nlohmann/json.hpp>

namespace tavro {

std::optional<std::string> PresetText::encodeFile(const TAVROPreset& preset) {
    constexpr int indentation = 2;
    try {
        // The plain variant keeps the keys of every object sorted.
        return nlohmann::json(preset.encode()).dump(indentation) + "\n";
    } catch (const nlohmann::json::exception&) {
        return std::nullopt;
    }
}

TAVROPreset PresetText::decodeFile(std::string_view utf8) {
    return TAVROPreset::decode(BoundedJson::parse(utf8));
}

std::optional<std::string> PresetText::encodeList(std::span<const TAVROPreset> presets) {
    auto list = nlohmann::ordered_json::array();
    for (const auto& preset : presets) {
        list.push_back(preset.encode());
    }
    try {
        return list.dump();
    } catch (const nlohmann::ordered_json::exception&) {
        return std::nullopt;
    }
}

std::optional<std::vector<TAVROPreset>> PresetText::decodeList(std::string_view utf8) {
    try {
        const auto list = BoundedJson::parse(utf8);
        if (!list.is_array()) {
            return std::nullopt;
        }
        std::vector<TAVROPreset> presets;
        for (const auto& entry : list) {
            presets.push_back(TAVROPreset::decode(entry));
        }
        return presets;
    } catch (const JsonTextError&) {
        return std::nullopt;
    } catch (const DecodingError&) {
        return std::nullopt;
    }
}

} // namespace tavro
