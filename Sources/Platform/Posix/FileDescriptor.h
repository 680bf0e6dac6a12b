#pragma once

#include <utility>

#include <unistd.h>

namespace tavro::posix {

/// An open file that is closed with this.
class FileDescriptor {
public:
    FileDescriptor() = default;

    /// A negative number is no file.
    explicit FileDescriptor(int number) : number_(number) {}

    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }

    ~FileDescriptor() {
        if (isOpen()) {
            close(number_);
        }
    }

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }

    [[nodiscard]] int number() const { return number_; }

private:
    int number_ = -1;
};

} // namespace tavro::posix
