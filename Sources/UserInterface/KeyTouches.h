#pragma once

#include "PerformanceModel/Character.h"

#include <functional>
#include <map>

namespace tavro {

/// Fingers and the mouse on the on-screen keyboard. Each holds at most one key, and takes the next one when
/// it slides there; a key that several of them hold sounds once, until the last has left it.
class KeyTouches {
public:
    using Handler = std::function<void(Character key)>;

    KeyTouches(Handler onKeyDown, Handler onKeyUp);

    /// The point is on this key now; NUL is the space between and beside the keys, where a point goes on
    /// holding what it holds.
    void moveTo(int point, Character key);

    /// The point has gone. One that is not known does nothing.
    void end(int point);

private:
    [[nodiscard]] bool isHeld(Character key) const;

    Handler onKeyDown_;
    Handler onKeyUp_;
    std::map<int, Character> keys_;
};

} // namespace tavro
