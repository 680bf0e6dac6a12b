#include "Platform/Linux/Evdev/GroupAccess.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <linux/posix_acl_xattr.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace tavro::evdev {

namespace {

constexpr std::uint16_t entryOfGroup = 0x08;
constexpr std::uint16_t readAndWrite = 06;

} // namespace

bool GroupAccess::isOpen(const std::string& path, gid_t group) {
    struct stat status{};
    if (stat(path.c_str(), &status) != 0) {
        return false;
    }
    // With a list these bits of the mode are its mask.
    constexpr mode_t bits = S_IRGRP | S_IWGRP;
    if ((status.st_mode & bits) != bits) {
        return false;
    }
    if (status.st_gid == group) {
        return true;
    }
    // More entries than any device has; a longer list counts as none.
    std::array<char, 4096> list{};
    const auto size = getxattr(path.c_str(), "system.posix_acl_access", list.data(), list.size());
    for (auto place = static_cast<ssize_t>(sizeof(posix_acl_xattr_header));
         place + static_cast<ssize_t>(sizeof(posix_acl_xattr_entry)) <= size;
         place += static_cast<ssize_t>(sizeof(posix_acl_xattr_entry))) {
        // In the byte order of every machine that this is built for.
        posix_acl_xattr_entry entry{};
        std::memcpy(&entry, list.data() + place, sizeof entry);
        if (entry.e_tag == entryOfGroup && entry.e_id == group) {
            return (entry.e_perm & readAndWrite) == readAndWrite;
        }
    }
    return false;
}

} // namespace tavro::evdev
