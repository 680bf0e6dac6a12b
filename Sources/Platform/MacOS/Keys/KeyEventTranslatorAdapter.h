#pragma once

#include "PlatformInterfaces/Application/KeyEventTranslator.h"

namespace tavro::macos {

/// Keys of Cocoa windows: the physical position is the virtual key code that comes with the event.
class KeyEventTranslatorAdapter final : public KeyEventTranslator {
public:
    [[nodiscard]] std::optional<KeyEvent> translate(const QKeyEvent& event) const override;
};

} // namespace tavro::macos
