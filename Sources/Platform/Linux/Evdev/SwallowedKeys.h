#pragma once

#include "Platform/Linux/Evdev/KeySet.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <cstdint>

namespace tavro::evdev {

/// Which presses the client wants swallowed, as far as it decides whether keyboards are to be grabbed.
class SwallowedKeys {
public:
    /// Fewer keys than these are a hotkey, for which the keyboards are left to the system. The keys that play
    /// are many more.
    static constexpr std::size_t fewestPlayingKeys = 10;

    /// Asks for every key, alone and with Shift.
    void ask(const KeyboardTap::Client& client);

    /// Whether the client plays: only then are keyboards grabbed.
    [[nodiscard]] bool arePlayed() const { return plain_.count() >= fewestPlayingKeys; }

    /// Whether the client should hear of a press that it cannot keep, because the keyboard is not grabbed
    /// yet. It hears of the hotkey; a key to play has been typed already and must not sound as well.
    [[nodiscard]] bool isToldUngrabbed(std::uint32_t evdevCode, HotkeyModifiers modifiers,
                                       KeyboardTap::Verdict verdict) const;

private:
    KeySet plain_;
    KeySet shifted_;
    /// What was swallowed when the client did not play: its hotkey.
    KeySet plainHotkey_;
    KeySet shiftedHotkey_;
};

} // namespace tavro::evdev
