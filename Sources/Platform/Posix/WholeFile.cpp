#include "Platform/Posix/WholeFile.h"

#include "Platform/Posix/FileDescriptor.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>

namespace tavro::posix {

namespace {

[[noreturn]] void fail(int error, const std::filesystem::path& file) {
    throw std::system_error(error, std::generic_category(), file.string());
}

} // namespace

std::optional<std::string> WholeFile::read(const std::filesystem::path& file) {
    const FileDescriptor descriptor(open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!descriptor.isOpen()) {
        if (errno == ENOENT) {
            return std::nullopt;
        }
        fail(errno, file);
    }
    struct stat status{};
    if (fstat(descriptor.number(), &status) != 0) {
        fail(errno, file);
    }
    if (!S_ISREG(status.st_mode)) {
        fail(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, file);
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
            fail(errno, file);
        }
        contents.append(part, 0, static_cast<std::size_t>(count));
        if (contents.size() > largestSize) {
            fail(EFBIG, file);
        }
    }
}

} // namespace tavro::posix
