#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace tavro {

/// Update manifests for tests.
class ManifestTexts {
public:
    ManifestTexts() = delete;

    /// One with every key, whose values are all acceptable.
    [[nodiscard]] static nlohmann::ordered_json whole() {
        return {{"schemaVersion", 1},
                {"version", "1.4.0"},
                {"publishedAt", "2025-03-01T09:30:00Z"},
                {"releaseNotes", {"Better chords", "Fewer faults"}},
                {"platforms",
                 {{"windows", package("TAVRO.exe", 'a')},
                  {"macos", macos()},
                  {"linux", package("tavro.deb", 'c')}}}};
    }

private:
    static nlohmann::ordered_json package(const std::string& fileName, char digit) {
        return {{"url", "https://updates.example/" + fileName},
                {"sha256", std::string(64, digit)},
                {"fileName", fileName}};
    }

    static nlohmann::ordered_json macos() {
        auto json = package("TAVRO.dmg", 'b');
        json["minimumOS"] = "13.0";
        return json;
    }
};

} // namespace tavro
