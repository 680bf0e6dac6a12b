#pragma once

#include "Platform/Linux/Evdev/KeySet.h"
#include "Platform/Posix/FileDescriptor.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <libevdev/libevdev.h>
#include <linux/input.h>

namespace tavro::evdev {

/// A keyboard of the system, opened for reading its events in order. One thread at a time.
class KeyboardDevice {
public:
    /// Nothing when it cannot be opened for reading and writing, or is no keyboard, or a copy made by this
    /// program.
    [[nodiscard]] static std::unique_ptr<KeyboardDevice> open(const std::string& path);

    ~KeyboardDevice();
    KeyboardDevice(const KeyboardDevice&) = delete;
    KeyboardDevice& operator=(const KeyboardDevice&) = delete;

    [[nodiscard]] const std::string& path() const { return path_; }

    /// To wait for events.
    [[nodiscard]] int descriptor() const { return file_.number(); }

    /// What it is made of, and its state as of the latest event; for making a copy.
    [[nodiscard]] libevdev& description() const { return *device_; }

    /// The keys that were down when it was opened.
    [[nodiscard]] KeySet initiallyHeld() const;

    /// The next event that has come, which stays the next one until it is taken; null when none has. What was
    /// lost because it was not read in time is made up for by events that lead to the present state.
    [[nodiscard]] const input_event* next();

    void take() { hasNext_ = false; }

    /// Whether it has been unplugged; seen by `next`.
    [[nodiscard]] bool isGone() const { return isGone_; }

    /// Whether a key is down at this moment, though its press may not have been read yet.
    [[nodiscard]] bool hasKeysDown() const;

    /// From now on nobody else gets its events. False when another program has grabbed it.
    [[nodiscard]] bool grab();
    void ungrab();

    /// The time now, on the clock of the events, in microseconds.
    [[nodiscard]] static std::int64_t now();
    [[nodiscard]] static std::int64_t timeOf(const input_event& event);

    /// Lights and sounds; the events end with a synchronization.
    void write(const std::vector<input_event>& events);

private:
    KeyboardDevice(std::string path, posix::FileDescriptor file, posix::FileDescriptor stateFile,
                   libevdev* device);

    std::string path_;
    posix::FileDescriptor file_;
    /// To ask for the state: the kernel forgets the events that wait in a file when its state is asked for.
    posix::FileDescriptor stateFile_;
    libevdev* device_;
    input_event next_{};
    bool hasNext_ = false;
    bool isCatchingUp_ = false;
    bool isGone_ = false;
};

} // namespace tavro::evdev
