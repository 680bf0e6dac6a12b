#pragma once

#include "Platform/Linux/Evdev/GrabSpan.h"
#include "Platform/Linux/Evdev/KeyBalance.h"
#include "Platform/Linux/Evdev/KeyboardDevice.h"
#include "Platform/Linux/Evdev/VirtualKeyboard.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tavro::evdev {

/// One keyboard with its copy: while it is grabbed, what the client does not swallow is typed on the copy.
/// The grab begins and ends only while none of its keys is down, so that the press and the release of a key
/// always reach the others by the same road. One thread at a time.
class GrabbedKeyboard {
public:
    /// The copy is made with the keyboard and long before the first grab: the session needs time to find it,
    /// and what is typed on it before then is lost.
    static constexpr std::chrono::microseconds settlingTime = std::chrono::milliseconds(300);

    GrabbedKeyboard(std::unique_ptr<KeyboardDevice> device, const std::string& uinputPath);

    /// Gives the keyboard back at once, with every key released that is down on the copy.
    ~GrabbedKeyboard();

    [[nodiscard]] const KeyboardDevice& device() const { return *device_; }

    /// The copy's descriptor to wait on, or a negative number.
    [[nodiscard]] int copyDescriptor() const { return copy_ ? copy_->descriptor() : -1; }

    [[nodiscard]] const KeyBalance& keys() const { return balance_; }

    [[nodiscard]] bool isGrabbed() const { return span_.isOpen(); }

    /// The time of the next event, in microseconds of the kernel's monotonic clock; nothing when none has
    /// come.
    [[nodiscard]] std::optional<std::int64_t> timeOfNext();

    /// Takes the next event, which has come.
    void takeNext(const KeyBalance::Tell& tell);

    /// Hands lights and sounds that the system sets on the copy over to the keyboard.
    void takeSettings();

    /// Grabs or gives back, when that is possible now. Returns how long to wait before it is worth another
    /// call without any event.
    std::optional<std::chrono::microseconds> settle(bool isGrabWanted);

private:
    void takeKey(const input_event& event, bool isOurs, const KeyBalance::Tell& tell);
    void add(const input_event& event);
    void finishFrame();
    [[nodiscard]] bool grab();
    void ungrab();

    std::unique_ptr<KeyboardDevice> device_;
    std::unique_ptr<VirtualKeyboard> copy_;
    KeyBalance balance_;
    GrabSpan span_;
    /// What was gathered for the copy since the last synchronization.
    std::vector<input_event> frame_;
    /// The raw code of a key comes before the key and shares its fate.
    std::optional<input_event> rawCode_;
};

} // namespace tavro::evdev
