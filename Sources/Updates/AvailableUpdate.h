#pragma once

#include "Updates/Manifest/UpdateManifest.h"

#include <string>

namespace tavro {

/// A version that is newer than the one that runs, and its package for this system.
struct AvailableUpdate {
    /// The text form of the version that runs.
    std::string installedVersion;
    UpdateManifest manifest;
    UpdatePlatform package;

    friend bool operator==(const AvailableUpdate&, const AvailableUpdate&) = default;
};

} // namespace tavro
