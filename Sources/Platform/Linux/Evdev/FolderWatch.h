#pragma once

#include "Platform/Linux/Evdev/FileDescriptor.h"

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

    /// What has happened since the last call. `lost` when the folder is gone.
    [[nodiscard]] Notice take();

private:
    FileDescriptor file_;
    int watch_ = -1;
};

} // namespace tavro::evdev
