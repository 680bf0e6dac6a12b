#pragma once

#include "PlatformInterfaces/Application/KeyEventTranslator.h"

namespace tavro::linuxos {

/// Keys of X11 and Wayland windows: the physical position is the scan code, which is the kernel's code plus
/// eight under every layout. Events without a scan code come from no keyboard and are nothing.
class KeyEventTranslatorAdapter final : public KeyEventTranslator {
public:
    [[nodiscard]] std::optional<KeyEvent> translate(const QKeyEvent& event) const override;
};

} // namespace tavro::linuxos
