#include "Platform/Linux/X11/VerdictSample.h"

#include <algorithm>

namespace tavro::x11 {

VerdictSample::VerdictSample(const PressTable& wanted) {
    // Two keys, with and without Shift: one press of them may be the hotkey, which is wanted in any case.
    constexpr std::size_t sampledKeys = 2;
    const auto playingKeys = wanted.playingKeys();
    for (std::size_t key = 0; key < playingKeys.size() && presses_.size() < 2 * sampledKeys; ++key) {
        if (playingKeys.test(key)) {
            for (const auto modifiers : {HotkeyModifiers(), HotkeyModifiers::shift}) {
                presses_.push_back(PressTable::press(static_cast<std::uint8_t>(key), modifiers));
            }
        }
    }
}

bool VerdictSample::hasChanged(const KeyboardTap::Client& client) const {
    return std::ranges::any_of(presses_, [&](const KeyboardTap::Event& press) {
        return client.verdict(press) != KeyboardTap::Verdict::swallow;
    });
}

} // namespace tavro::x11
