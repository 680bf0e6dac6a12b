#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <string>

namespace tavro::proof {

/// A virtual terminal and who reads from it, key by key.
class Terminal {
public:
    explicit Terminal(int number);

    [[nodiscard]] const std::string& path() const { return path_; }

    /// Gives it the screen and the keyboards.
    void activate() const;

    /// What was typed there since the last call.
    [[nodiscard]] std::string take();

private:
    const int number_;
    const std::string path_;
    posix::FileDescriptor file_;
};

} // namespace tavro::proof
