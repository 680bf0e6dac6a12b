#pragma once

#include "PlatformInterfaces/Application/KeyEventTranslator.h"

namespace tavro::headless {

/// Keys where there is no keyboard at all, such as under the offscreen platform: events made by hand that
/// carry a scan code as X11 counts them, the kernel's code plus eight. Without one an event is nothing.
class KeyEventTranslatorAdapter final : public KeyEventTranslator {
public:
    [[nodiscard]] std::optional<KeyEvent> translate(const QKeyEvent& event) const override;
};

} // namespace tavro::headless
