#pragma once

#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/ModifierMap.h"
#include "Platform/Linux/X11/PressTable.h"

namespace tavro::x11 {

/// The presses that this program has reserved for itself, on every screen. At such a press the keyboard
/// stops, its further keys wait in order, and the event comes here to be answered. One thread.
class KeyGrabs {
public:
    /// The connection outlives this.
    explicit KeyGrabs(const Connection& connection) : connection_(connection) {}

    /// Reserves exactly these, keeping what is already held. What others have is left to them; every call
    /// tries it anew. Takes a round trip when something is to be reserved. A press that falls into the time
    /// of the change may come as an event of the core protocol, and wants to be answered as well.
    void change(const PressTable& wanted, const ModifierMap& modifierMap);

    /// The modifiers have other bits now. What is held stays so without a gap.
    void remap(const ModifierMap& before, const ModifierMap& now);

    /// Lets go of everything. The map must be the one of the last change.
    void releaseAll(const ModifierMap& modifierMap);

    [[nodiscard]] const PressTable& held() const { return held_; }

    /// The wanted presses that others have.
    [[nodiscard]] const PressTable& taken() const { return taken_; }

private:
    void release(const PressTable& presses, const ModifierMap& modifierMap);
    [[nodiscard]] PressTable takenInCore(const PressTable& presses, const ModifierMap& modifierMap) const;
    void grab(const PressTable& presses, const ModifierMap& modifierMap);
    void ungrab(std::uint8_t key, const std::vector<std::uint32_t>& bits) const;
    [[nodiscard]] xcb_input_xi_passive_grab_device_cookie_t
    askFor(xcb_window_t root, std::uint8_t key, const std::vector<std::uint32_t>& bits) const;

    const Connection& connection_;
    PressTable held_;
    PressTable taken_;
};

} // namespace tavro::x11
