#pragma once

#include <filesystem>
#include <system_error>

namespace tavro::posix {

/// Throws the system's error of this number (an `errno`), with the file's name in its text.
[[noreturn]] inline void throwFileError(int error, const std::filesystem::path& file) {
    throw std::system_error(error, std::generic_category(), file.string());
}

} // namespace tavro::posix
