#include "Updates/Manifest/UpdateManifest.h"

#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "Updates/Manifest/InternetDate.h"
#include "Updates/Manifest/ManifestKeys.h"

#include <nlohmann/json.hpp>

namespace tavro {

namespace {

std::chrono::sys_seconds dateOf(const ManifestKeys& keys, const std::string& key) {
    const auto& json = keys.required(key);
    const auto date = InternetDate::parse(JsonDecoding::text(keys.pathOf(key), json));
    if (!date) {
        throw DecodingError(keys.pathOf(key), "a date such as \"2025-03-01T09:30:00Z\"", json);
    }
    return *date;
}

std::vector<std::string> textsOf(const ManifestKeys& keys, const std::string& key) {
    const auto& json = keys.required(key);
    if (!json.is_array()) {
        throw DecodingError(keys.pathOf(key), "a list of texts", json);
    }
    std::vector<std::string> texts;
    texts.reserve(json.size());
    for (const auto& entry : json) {
        texts.push_back(JsonDecoding::text(keys.pathOf(key), entry));
    }
    return texts;
}

} // namespace

UpdateManifest UpdateManifest::decode(std::string_view utf8) {
    const auto json = BoundedJson::parse(utf8);
    const ManifestKeys keys({}, json);
    return {.schemaVersion = keys.integer("schemaVersion"),
            .version = keys.text("version"),
            .publishedAt = dateOf(keys, "publishedAt"),
            .releaseNotes = textsOf(keys, "releaseNotes"),
            .platforms = UpdatePlatforms::decode("platforms", keys.required("platforms"))};
}

} // namespace tavro
