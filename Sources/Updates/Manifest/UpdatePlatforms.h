#pragma once

#include "Updates/Manifest/UpdatePlatform.h"

namespace tavro {

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
