#include "Platform/Linux/GuardDeeds/ForeignFiles.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace tavro::guard {

ForeignFiles::ForeignFiles(pid_t process) : process_(static_cast<int>(syscall(SYS_pidfd_open, process, 0))) {}

posix::FileDescriptor ForeignFiles::duplicate(int file) const {
    return posix::FileDescriptor(static_cast<int>(syscall(SYS_pidfd_getfd, process_.number(), file, 0)));
}

} // namespace tavro::guard
