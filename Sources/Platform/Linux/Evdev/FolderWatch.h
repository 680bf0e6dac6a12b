#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <string>

namespace tavro::evdev {

/// Notices files that come to a folder, or that come to be allowed there. One thread at a time.
class FolderWatch {
public:
    /// A folder that cannot be watched is lost from the start.
    explicit FolderWatch(const std::string& folder);

    enum class Notice { nothing, changed, lost };

    /// To wait for notices, or a negative number.
    [[nodiscard]] int descriptor() const { return file_.number(); }

    /// What has happened since the last call: `changed` when it is worth looking into the folder, which may
    /// be missing then, and `lost` when it certainly is.
    [[nodiscard]] Notice take();

private:
    posix::FileDescriptor file_;
    int watch_ = -1;
};

} // namespace tavro::evdev
