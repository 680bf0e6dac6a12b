#pragma once

#include <cstdint>

namespace tavro {

/// Is told what the window system tells of keys besides the events that it sends to the window that has the
/// keyboard. Key codes are the Mac's virtual ones. Main thread only.
class HeldKeyNotices {
public:
    /// A key whose press went to a window of the program went up, whoever has the keyboard by then. The time
    /// is that of `KeyEvent`.
    virtual void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) = 0;

    /// The keyboard came to the window with a key down whose press went to others.
    virtual void keepSilent(std::int64_t keyCode) = 0;

protected:
    ~HeldKeyNotices() = default;
};

} // namespace tavro
