#pragma once

#include <filesystem>

namespace tavro::linuxos {

/// Where programs keep what the user has set.
class ConfigFolder {
public:
    ConfigFolder() = delete;

    /// $XDG_CONFIG_HOME when it is an absolute path, otherwise .config in the user's home. Need not exist.
    [[nodiscard]] static std::filesystem::path ofUser();
};

} // namespace tavro::linuxos
