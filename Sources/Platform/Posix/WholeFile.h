#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace tavro::posix {

/// Reading files whole.
class WholeFile {
public:
    WholeFile() = delete;

    /// Nobody's settings are larger; reading on would only fill the memory.
    static constexpr std::size_t largestSize = 64UL << 20U;

    /// The bytes of the file; nothing when there is none. Throws `std::system_error` when it cannot be read,
    /// is larger, or is no regular file; it never waits for a pipe's other end.
    [[nodiscard]] static std::optional<std::string> read(const std::filesystem::path& file);
};

} // namespace tavro::posix
