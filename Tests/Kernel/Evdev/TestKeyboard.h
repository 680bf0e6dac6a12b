#pragma once

#include "Platform/Posix/FileDescriptor.h"

#include <cstdint>
#include <string>
#include <vector>

#include <libevdev/libevdev-uinput.h>
#include <linux/input.h>

namespace tavro::proof {

/// A keyboard, plugged in as long as this exists; or something that is none.
class TestKeyboard {
public:
    enum class Kind {
        keyboard,
        /// One that moves the pointer too.
        withPointer,
        /// Buttons, axes and the keys of a music player.
        mouse,
    };

    /// The name is the one that spectators show.
    explicit TestKeyboard(const std::string& name, Kind kind = Kind::keyboard);
    ~TestKeyboard();
    TestKeyboard(const TestKeyboard&) = delete;
    TestKeyboard& operator=(const TestKeyboard&) = delete;

    /// What the names of all of them begin with.
    static constexpr auto namePrefix = "Proof ";

    [[nodiscard]] const std::string& name() const { return name_; }

    [[nodiscard]] std::string path() const;

    /// A key with its raw code, as hardware tells it.
    void press(std::uint16_t key) { change(key, 1); }

    void release(std::uint16_t key) { change(key, 0); }

    void tap(std::uint16_t key) {
        press(key);
        release(key);
    }

    void change(std::uint16_t key, std::int32_t value);

    void writeFrame(const std::vector<input_event>& events);

    [[nodiscard]] static input_event event(std::uint16_t type, std::uint16_t code, std::int32_t value);

    /// Whether the light is lit that stands on it.
    [[nodiscard]] bool isLit(std::uint16_t light) const;

private:
    std::string name_;
    libevdev_uinput* device_ = nullptr;
    posix::FileDescriptor reader_;
};

} // namespace tavro::proof
