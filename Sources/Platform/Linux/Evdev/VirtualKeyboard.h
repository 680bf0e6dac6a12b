#pragma once

#include "Platform/Linux/Evdev/KeyboardDevice.h"
#include "Platform/Posix/FileDescriptor.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <libevdev/libevdev-uinput.h>

namespace tavro::evdev {

/// A keyboard made by this program, with the keys, lights and axes of a real one. The kernel removes it when
/// the program ends, however that happens. One thread at a time.
class VirtualKeyboard {
public:
    /// Nothing when the system makes none. Its name tells what it is a copy of.
    [[nodiscard]] static std::unique_ptr<VirtualKeyboard> copyOf(const KeyboardDevice& original,
                                                                 const std::string& uinputPath);

    ~VirtualKeyboard();
    VirtualKeyboard(const VirtualKeyboard&) = delete;
    VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;

    /// When it was made, in microseconds of the clock of the events.
    [[nodiscard]] std::int64_t creationTime() const { return creationTime_; }

    /// To wait for what the system sets on it.
    [[nodiscard]] int descriptor() const { return file_.number(); }

    /// Takes over lights, switches, axes and the rate of repetition of the original.
    void takeStateOf(const KeyboardDevice& original);

    /// Types; the events are one frame and end with a synchronization.
    void write(const std::vector<input_event>& events);

    /// What the system has set since the last call: lights and sounds.
    [[nodiscard]] std::vector<input_event> takeSettings();

private:
    VirtualKeyboard(posix::FileDescriptor file, libevdev_uinput* device);

    posix::FileDescriptor file_;
    libevdev_uinput* device_;
    std::int64_t creationTime_;
};

} // namespace tavro::evdev
