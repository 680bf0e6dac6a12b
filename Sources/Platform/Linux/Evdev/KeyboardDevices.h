#pragma once

#include "Platform/Linux/Evdev/FolderWatch.h"
#include "Platform/Linux/Evdev/GrabbedKeyboard.h"
#include "Platform/Linux/Evdev/InputDevices.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <poll.h>

namespace tavro::evdev {

/// All keyboards of the seat, as they come and go. One thread at a time.
class KeyboardDevices {
public:
    /// Takes an event of a key. The state of all keyboards is that after the event.
    using Tell = KeyBalance::Tell;

    explicit KeyboardDevices(InputDevices devices);

    /// Whether keyboards can be found at all; without it those that are here are left.
    [[nodiscard]] bool isLost() const { return isLost_; }

    /// What to wait for, appended to the list.
    void addDescriptors(std::vector<pollfd>& descriptors) const;

    /// The open files of all keyboards and of their copies, appended to the lists.
    void addFiles(std::vector<int>& devices, std::vector<int>& copies) const;

    /// Takes the earliest event of all keyboards, whichever was typed on. False when none has come.
    [[nodiscard]] bool takeNext(const Tell& tell);

    /// Takes what else has come: lights, and keyboards that were plugged in. Call it when every event was
    /// taken: a keyboard that is gone may have left its name to another.
    void takeNotices();

    /// Lets every keyboard be grabbed or given back, as far as that is possible now. Returns how long to wait
    /// before it is worth another call without any event.
    [[nodiscard]] std::optional<std::chrono::microseconds> settle(bool isGrabWanted);

    /// The keys that are down on any keyboard.
    [[nodiscard]] KeySet held() const;

    /// Tells the release of every key of which the client knows that it is down.
    void tellReleases(const Tell& tell) const;

private:
    void join();
    void removeGone(const Tell& tell);

    InputDevices devices_;
    FolderWatch watch_;
    std::vector<std::unique_ptr<GrabbedKeyboard>> keyboards_;
    bool isLost_ = false;
    /// How often devices that are not settled are still looked at before they are left alone.
    int looksLeft_ = 0;
};

} // namespace tavro::evdev
