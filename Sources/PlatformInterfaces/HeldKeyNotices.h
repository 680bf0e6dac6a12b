#pragma once

#include <cstdint>
#include <functional>

namespace tavro {

/// What the window system tells of keys besides the events that it sends to the window that has the keyboard.
struct HeldKeyNotices {
    /// A key whose press went to a window of the program went up, whoever has the keyboard by then. The key
    /// code is the Mac's virtual one, the time that of `KeyEvent`.
    std::function<void(std::int64_t keyCode, std::uint32_t time)> onReleased;
    /// The keyboard came to the window with a key down whose press went to others.
    std::function<void(std::int64_t keyCode)> onHeldBefore;
};

} // namespace tavro
