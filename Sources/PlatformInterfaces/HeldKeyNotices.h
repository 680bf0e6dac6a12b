#pragma once

#include <cstdint>

namespace tavro {

/// Is told what the window system tells of keys besides the events that it sends to the window that has the
/// keyboard. Key codes are the Mac's virtual ones. Main thread only.
class HeldKeyNotices {
public:
    /// A key went up whose press went to a window of the program, or which is awaited, whoever has the
    /// keyboard by then. The time is that of `KeyEvent`.
    virtual void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) = 0;

    /// The keyboard came to the window with a key down whose press went to others. The time lies behind all
    /// that was told before, and not behind what the key does from then on; 0 when nothing was.
    virtual void keepSilent(std::int64_t keyCode, std::uint32_t time) = 0;

    /// Whether the program waits for the release of a key although its press came in another way.
    [[nodiscard]] virtual bool isAwaited(std::int64_t keyCode) const = 0;

protected:
    ~HeldKeyNotices() = default;
};

} // namespace tavro
