#include "Platform/Posix/FileReplacement.h"

#include "Platform/Posix/FileError.h"

#include <cerrno>
#include <chrono>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace tavro::posix {

namespace {

using std::chrono::steady_clock;

constexpr std::chrono::seconds longestWait{2};
constexpr std::chrono::milliseconds pauseBetweenTries{2};
constexpr mode_t forTheUserAlone = S_IRUSR | S_IWUSR;

/// The file that a chain of links ends at, whether it exists or not.
std::filesystem::path behindLinks(std::filesystem::path file) {
    constexpr int longestChain = 40;
    for (int links = 0; links < longestChain; ++links) {
        std::error_code error;
        const auto target = std::filesystem::read_symlink(file, error);
        if (error) {
            return file;
        }
        file = file.parent_path() / target;
    }
    throwFileError(ELOOP, file);
}

/// A failure shows when the file is opened there.
void makeFolder(const std::filesystem::path& folder) {
    if (mkdir(folder.c_str(), S_IRWXU) != 0 && errno == ENOENT && folder.has_relative_path()) {
        makeFolder(folder.parent_path());
        mkdir(folder.c_str(), S_IRWXU);
    }
}

void writeAll(int descriptor, std::string_view contents, const std::filesystem::path& file) {
    while (!contents.empty()) {
        const auto count = write(descriptor, contents.data(), contents.size());
        if (count >= 0) {
            contents.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            throwFileError(errno, file);
        }
    }
}

bool isOpenFileAt(int descriptor, const std::filesystem::path& file) {
    struct stat opened{};
    struct stat present{};
    return fstat(descriptor, &opened) == 0 && lstat(file.c_str(), &present) == 0 &&
           opened.st_dev == present.st_dev && opened.st_ino == present.st_ino;
}

} // namespace

FileReplacement::FileReplacement(const std::filesystem::path& file) : file_(behindLinks(file)) {
    newFile_ = file_.parent_path() / ("." + file_.filename().string() + ".new");
    // Replacing it would be possible, but whoever has closed it does not want it changed.
    if (access(file_.c_str(), W_OK) != 0 && errno != ENOENT) {
        throwFileError(errno, file_);
    }
    makeFolder(file_.parent_path());
    lock();
}

FileReplacement::~FileReplacement() {
    if (!isCommitted_) {
        unlink(newFile_.c_str());
    }
}

void FileReplacement::lock() {
    const auto deadline = steady_clock::now() + longestWait;
    for (;;) {
        FileDescriptor opened(open(newFile_.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK,
                                   forTheUserAlone));
        if (!opened.isOpen()) {
            throwFileError(errno, newFile_);
        }
        int error = 0;
        while (flock(opened.number(), LOCK_EX | LOCK_NB) != 0) {
            error = errno;
            if ((error != EWOULDBLOCK && error != EINTR) || steady_clock::now() >= deadline) {
                throwFileError(error, newFile_);
            }
            std::this_thread::sleep_for(pauseBetweenTries);
        }
        // Whoever had the lock has meanwhile moved the file to its place, or removed it.
        if (isOpenFileAt(opened.number(), newFile_)) {
            descriptor_ = std::move(opened);
            return;
        }
    }
}

void FileReplacement::commit(std::string_view contents) {
    const auto number = descriptor_.number();
    if (ftruncate(number, 0) != 0 || fchmod(number, forTheUserAlone) != 0) {
        throwFileError(errno, newFile_);
    }
    writeAll(number, contents, newFile_);
    if (fsync(number) != 0) {
        throwFileError(errno, newFile_);
    }
    if (rename(newFile_.c_str(), file_.c_str()) != 0) {
        throwFileError(errno, file_);
    }
    isCommitted_ = true;
    // The file is in its place already. Some file systems cannot do this, and need not.
    const FileDescriptor folder(open(file_.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.isOpen()) {
        fsync(folder.number());
    }
}

} // namespace tavro::posix
