#pragma once

#include "Updates/Manifest/UpdatePlatform.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tavro {

/// The document that the update feed serves. It is decoded and no more: whether addresses, checksums and
/// names are acceptable is decided by `UpdateService`.
struct UpdateManifest {
    std::int64_t schemaVersion = 0;
    /// The offered version as it was served.
    std::string version;
    std::chrono::sys_seconds publishedAt;
    /// One entry for each line.
    std::vector<std::string> releaseNotes;
    UpdatePlatforms platforms;

    friend bool operator==(const UpdateManifest&, const UpdateManifest&) = default;

    /// Throws `JsonTextError` or `DecodingError`; a key too many is no error.
    [[nodiscard]] static UpdateManifest decode(std::string_view utf8);
};

} // namespace tavro
