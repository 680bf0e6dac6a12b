#include "Platform/Posix/WholeFile.h"

#include "Platform/Posix/FileDescriptor.h"
#include "Platform/Posix/FileError.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace tavro::posix {

std::optional<std::string> WholeFile::read(const std::filesystem::path& file) {
    const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!descriptor.isOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        throwFileError(errno, file);
    }
    struct stat status{};
    if (fstat(descriptor.number(), &status) != 0) {
        throwFileError(errno, file);
    }
    if (!S_ISREG(status.st_mode)) {
        throwFileError(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, file);
    }
    std::string contents;
    std::string part(64UL << 10U, '\0');
    for (;;) {
        const auto count = ::read(descriptor.number(), part.data(), part.size());
        if (count == 0) {
            return contents;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            throwFileError(errno, file);
        }
        contents.append(part, 0, static_cast<std::size_t>(count));
        if (contents.size() > largestSize) {
            throwFileError(EFBIG, file);
        }
    }
}

} // namespace tavro::posix
