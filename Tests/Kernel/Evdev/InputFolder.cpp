#include "InputFolder.h"

#include "Expectations.h"

#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace tavro::proof {

InputFolder::InputFolder() : path_("/dev/shm/input-XXXXXX") {
    expect(mkdtemp(path_.data()) != nullptr, "cannot make a folder");
    expect(chmod(path_.c_str(), 0755) == 0, "cannot open the folder to others");
}

InputFolder::~InputFolder() {
    remove();
}

void InputFolder::add(const TestKeyboard& keyboard, unsigned int permissions) {
    addFile(keyboard.path(), permissions);
}

void InputFolder::addFile(const std::string& path, unsigned int permissions) {
    struct stat status{};
    expect(stat(path.c_str(), &status) == 0, "the device has no file");
    const auto own = pathOf(path);
    // Of these permissions from the start: a change of them would be noticed as one.
    const auto previous = umask(0);
    const auto result = mknod(own.c_str(), S_IFCHR | permissions, status.st_rdev);
    umask(previous);
    expect(result == 0, "cannot make the file of a device");
}

void InputFolder::allow(const TestKeyboard& keyboard, unsigned int permissions) {
    expect(chmod(pathOf(keyboard.path()).c_str(), permissions) == 0, "cannot change who may use the device");
}

void InputFolder::remove(const TestKeyboard& keyboard) {
    std::filesystem::remove(pathOf(keyboard.path()));
}

std::string InputFolder::pathOf(const std::string& path) const {
    return path_ + '/' + std::filesystem::path(path).filename().string();
}

void InputFolder::remove() {
    std::filesystem::remove_all(path_);
}

} // namespace tavro::proof
