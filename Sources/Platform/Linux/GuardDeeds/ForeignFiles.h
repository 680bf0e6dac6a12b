#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <sys/types.h>

namespace tavro::guard {

/// The open files of another process.
class ForeignFiles {
public:
    /// One that has ended already has none.
    explicit ForeignFiles(pid_t process);

    /// A duplicate of one of them; closed, with the reason in errno, when there can be none.
    [[nodiscard]] posix::FileDescriptor duplicate(int file) const;

private:
    posix::FileDescriptor process_;
};

} // namespace tavro::guard
