#pragma once

#include <string>

#include <sys/types.h>

namespace tavro::evdev {

/// What a file lets a group do.
class GroupAccess {
public:
    GroupAccess() = delete;

    /// Whether the group may read and write the file, as its own one or by an entry of its access control
    /// list.
    [[nodiscard]] static bool isOpen(const std::string& path, gid_t group);
};

} // namespace tavro::evdev
