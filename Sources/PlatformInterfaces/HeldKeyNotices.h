#pragma once

#include <cstdint>
#include <functional>

namespace tavro {

/// What the window system tells of keys besides the events that it sends to the window that has the keyboard.
struct HeldKeyNotices {
    /// A key went up whose press went to a window of the program, or which is awaited, whoever has the
    /// keyboard by then. The key code is the Mac's virtual one, the time that of `KeyEvent`.
    std::function<void(std::int64_t keyCode, std::uint32_t time)> onReleased;
    /// The keyboard came to the window with a key down whose press went to others. The time lies behind all
    /// that was told before, and not behind what the key does from then on; 0 when nothing was.
    std::function<void(std::int64_t keyCode, std::uint32_t time)> onHeldBefore;
    /// Whether the program waits for the release of a key although its press came in another way.
    std::function<bool(std::int64_t keyCode)> isAwaited;
};

} // namespace tavro
