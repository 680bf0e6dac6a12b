#pragma once

#include <nlohmann/json_fwd.hpp>

#include <optional>
#include <string>

namespace tavro {

/// The package of one operating system, as the update manifest names it. All texts are as they were served.
struct UpdatePlatform {
    /// Where the package is downloaded from.
    std::string url;
    /// SHA-256 of the package, hexadecimal, in either case and with any separators.
    std::string sha256;
    /// The name under which the package is saved.
    std::string fileName;
    /// For the reader only; nothing compares it.
    std::optional<std::string> minimumOS;

    friend bool operator==(const UpdatePlatform&, const UpdatePlatform&) = default;

    /// Throws `DecodingError`, which names the place: `path` is that of the object itself.
    [[nodiscard]] static UpdatePlatform decode(const std::string& path, const nlohmann::ordered_json& json);
};

/// The packages of an update manifest.
struct UpdatePlatforms {
    UpdatePlatform windows;
    UpdatePlatform macos;
    /// A feed may offer nothing for Linux.
    std::optional<UpdatePlatform> linuxos;

    friend bool operator==(const UpdatePlatforms&, const UpdatePlatforms&) = default;

    /// Throws `DecodingError`, which names the place: `path` is that of the object itself.
    [[nodiscard]] static UpdatePlatforms decode(const std::string& path, const nlohmann::ordered_json& json);
};

} // namespace tavro
