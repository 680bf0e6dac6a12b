#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <filesystem>
#include <string_view>

namespace tavro::posix {

/// Replaces a file as a whole: whenever the program or the machine ends, the file has its old contents or its
/// new ones. While this lives, no other process that uses it for the same file gets past its constructor, so
/// what is read from the file meanwhile is still what is replaced.
///
/// The new contents are collected in a hidden file beside the old one. It is also what processes lock: it has
/// a fixed name, so that one left by a killed process is taken up by the next one instead of piling up.
class FileReplacement {
public:
    /// Waits for other processes, but not for ever: one that is stopped in the middle must not stop the
    /// others. Missing folders are made. A symbolic link is followed and stays a link. Throws
    /// `std::system_error`.
    explicit FileReplacement(const std::filesystem::path& file);

    /// Without a commit everything is as before.
    ~FileReplacement();

    FileReplacement(const FileReplacement&) = delete;
    FileReplacement& operator=(const FileReplacement&) = delete;

    /// Puts the contents in the file's place, readable for the user alone. Once. Throws `std::system_error`
    /// when that failed; the file is as before then.
    void commit(std::string_view contents);

private:
    void lock();

    std::filesystem::path file_;
    std::filesystem::path newFile_;
    FileDescriptor descriptor_;
    bool isCommitted_ = false;
};

} // namespace tavro::posix
