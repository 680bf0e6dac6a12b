#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <optional>
#include <string>

namespace tavro {

/// One object of an update manifest, read strictly. Everything throws `DecodingError`, which names the place
/// by its whole path, such as "platforms.macos.url". Keys that nobody asks for are left alone.
class ManifestKeys {
public:
    /// The value must be an object and outlive this. The path of the whole manifest is empty.
    ManifestKeys(std::string path, const nlohmann::ordered_json& json);

    [[nodiscard]] std::string pathOf(const std::string& key) const;

    /// Null when the key is absent or its value is null.
    [[nodiscard]] const nlohmann::ordered_json* find(const std::string& key) const;

    [[nodiscard]] const nlohmann::ordered_json& required(const std::string& key) const;

    [[nodiscard]] std::int64_t integer(const std::string& key) const;

    [[nodiscard]] std::string text(const std::string& key) const;

    [[nodiscard]] std::optional<std::string> optionalText(const std::string& key) const;

private:
    std::string path_;
    const nlohmann::ordered_json& json_;
};

} // namespace tavro
