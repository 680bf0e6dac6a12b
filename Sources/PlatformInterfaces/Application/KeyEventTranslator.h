#pragma once

#include "PlatformInterfaces/KeyEvent.h"

#include <optional>

class QKeyEvent;

namespace tavro {

/// Turns the windowing system's key events into physical positions. One adapter per platform.
class KeyEventTranslator {
public:
    KeyEventTranslator() = default;
    KeyEventTranslator(const KeyEventTranslator&) = delete;
    KeyEventTranslator& operator=(const KeyEventTranslator&) = delete;
    virtual ~KeyEventTranslator() = default;

    /// Nothing for modifier keys and for events that are no press or release by a finger, such as the
    /// releases that some systems insert into an autorepeat. Key-press, key-release and shortcut-override
    /// events are understood; the last reads as a press.
    [[nodiscard]] virtual std::optional<KeyEvent> translate(const QKeyEvent& event) const = 0;
};

} // namespace tavro
