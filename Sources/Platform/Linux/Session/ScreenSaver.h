#pragma once

#include "Platform/Linux/Session/Bus.h"

#include <functional>

namespace tavro::linuxos {

/// What the desktop's screen saver tells. Main thread only.
class ScreenSaver {
public:
    /// Tells every change.
    explicit ScreenSaver(std::function<void()> onChange);

    /// Asks.
    void open() { bus_.open(); }

    /// Whether the screen is locked or blank. Not without a screen saver: one that is gone locks nothing.
    [[nodiscard]] bool isActive() const { return isActive_; }

private:
    void begin();
    void ask();
    void set(bool isActive);

    Bus bus_{Bus::Kind::session};
    std::function<void()> onChange_;
    bool isActive_ = false;
};

} // namespace tavro::linuxos
