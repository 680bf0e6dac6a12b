#pragma once

#include "PlatformInterfaces/KeyboardTap.h"

#include <CoreFoundation/CoreFoundation.h>

namespace tavro::macos {

/// The login session's event tap. Its events come on the main thread's run loop.
class KeyboardTapAdapter final : public KeyboardTap {
public:
    KeyboardTapAdapter() = default;
    ~KeyboardTapAdapter() override;

    [[nodiscard]] bool isTrusted(bool prompts) override;
    [[nodiscard]] bool create(Client& client) override;
    void enable(bool isOn) override;
    void updateVerdicts() override;
    void dispose() override;

private:
    CFMachPortRef eventTap_ = nullptr;
    CFRunLoopSourceRef runLoopSource_ = nullptr;
};

} // namespace tavro::macos
