#pragma once

#include "Platform/Linux/Evdev/KeySet.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tavro::evdev {

/// Decides which key events of one device go on to its copy, so that every release goes where its press went,
/// whatever is wished meanwhile.
class KeyBalance {
public:
    struct Change {
        std::uint32_t evdevCode = 0;
        /// A press or a release.
        KeyboardTap::Event::Type type = KeyboardTap::Event::Type::keyDown;
        bool isAutorepeat = false;
        /// Whether it can be swallowed.
        bool isGrabbed = false;
    };

    /// Tells the client of a key; nothing when it was not told.
    using Tell = std::function<std::optional<KeyboardTap::Verdict>(const Change& change)>;

    /// `heldKeys` are those that are down already; nobody here has seen their presses.
    explicit KeyBalance(const KeySet& heldKeys) : held_(heldKeys) {}

    /// Takes an event of a key as the kernel values it: 0 for a release, 1 for a press, 2 for a repeat. While
    /// the device is not grabbed its events reach everybody by themselves, and the client's answer changes
    /// nothing. True when the event is to be written to the copy. Repeats never are: the copy makes its own.
    [[nodiscard]] bool take(std::uint32_t evdevCode, std::int32_t value, bool isGrabbed, const Tell& tell);

    /// The keys that are down on the device.
    [[nodiscard]] const KeySet& held() const { return held_; }

    /// The keys that are down on the copy.
    [[nodiscard]] const KeySet& passedOn() const { return passedOn_; }

    /// The keys of which the client knows that they are down.
    [[nodiscard]] const KeySet& told() const { return told_; }

private:
    [[nodiscard]] bool takePress(std::uint32_t evdevCode, bool isGrabbed, const Tell& tell);
    [[nodiscard]] bool takeRelease(std::uint32_t evdevCode, bool isGrabbed, const Tell& tell);

    KeySet held_;
    KeySet passedOn_;
    KeySet told_;
};

} // namespace tavro::evdev
