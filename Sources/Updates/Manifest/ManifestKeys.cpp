#include "Updates/Manifest/ManifestKeys.h"

#include "PerformanceModel/JsonDecoding.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace tavro {

ManifestKeys::ManifestKeys(std::string path, const nlohmann::ordered_json& json)
    : path_(std::move(path)), json_(json) {
    if (!json.is_object()) {
        throw DecodingError(path_, "an object", json);
    }
}

std::string ManifestKeys::pathOf(const std::string& key) const {
    return path_.empty() ? key : path_ + "." + key;
}

const nlohmann::ordered_json* ManifestKeys::find(const std::string& key) const {
    const auto entry = json_.find(key);
    return entry == json_.end() || entry->is_null() ? nullptr : &*entry;
}

const nlohmann::ordered_json& ManifestKeys::required(const std::string& key) const {
    const auto entry = json_.find(key);
    if (entry == json_.end()) {
        throw DecodingError(path_, "the key \"" + key + "\"", json_);
    }
    return *entry;
}

std::int64_t ManifestKeys::integer(const std::string& key) const {
    return JsonDecoding::integer(pathOf(key), required(key));
}

std::string ManifestKeys::text(const std::string& key) const {
    return JsonDecoding::text(pathOf(key), required(key));
}

std::optional<std::string> ManifestKeys::optionalText(const std::string& key) const {
    const auto* const entry = find(key);
    return entry != nullptr ? std::optional(JsonDecoding::text(pathOf(key), *entry)) : std::nullopt;
}

} // namespace tavro
