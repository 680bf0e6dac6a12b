#pragma once

#include "TestKeyboard.h"

#include <string>

namespace tavro::proof {

/// A folder of input devices of its own.
class InputFolder {
public:
    InputFolder();
    ~InputFolder();
    InputFolder(const InputFolder&) = delete;
    InputFolder& operator=(const InputFolder&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    /// The permissions are those of a file.
    void add(const TestKeyboard& keyboard, unsigned int permissions = 0600);
    /// The same for a device by its own file.
    void addFile(const std::string& path, unsigned int permissions);
    void allow(const TestKeyboard& keyboard, unsigned int permissions);
    void remove(const TestKeyboard& keyboard);

    /// Takes the folder away.
    void remove();

    /// The own file of the device that has this file elsewhere.
    [[nodiscard]] std::string pathOf(const std::string& path) const;

private:
    std::string path_;
};

} // namespace tavro::proof
