#pragma once

#include <cstdint>

namespace tavro::linuxos {

/// The kernel's key codes and what stands for them in the rest of the program.
class EvdevKeyCodes {
public:
    EvdevKeyCodes() = delete;

    /// X11 and Wayland count the kernel's codes from here.
    static constexpr std::uint32_t scanCodeOffset = 8;

    /// Keys that no Mac keyboard has get the kernel's code above this, far from every virtual key code.
    static constexpr std::int64_t foreignKeyBase = 0x1000;

    /// The Mac's virtual key code of the same physical position. Defined for every code, and different for
    /// different codes.
    [[nodiscard]] static std::int64_t virtualKeyCode(std::uint32_t evdevCode);
};

} // namespace tavro::linuxos
