#include "Platform/Linux/Settings/ConfigFolder.h"

#include <cstdlib>
#include <optional>

#include <pwd.h>
#include <unistd.h>

namespace tavro::linuxos {

namespace {

/// A relative path would mean another folder with every working directory.
std::optional<std::filesystem::path> absolutePathIn(const char* variable) {
    const char* const value = std::getenv(variable);
    const std::filesystem::path path(value != nullptr ? value : "");
    return path.is_absolute() ? std::optional(path) : std::nullopt;
}

std::filesystem::path home() {
    if (auto path = absolutePathIn("HOME")) {
        return *path;
    }
    const auto* const user = getpwuid(getuid());
    return user != nullptr ? user->pw_dir : "/";
}

} // namespace

std::filesystem::path ConfigFolder::ofUser() {
    const auto configured = absolutePathIn("XDG_CONFIG_HOME");
    return configured ? *configured : home() / ".config";
}

} // namespace tavro::linuxos
