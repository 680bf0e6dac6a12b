#pragma once

#include "Platform/Linux/Evdev/InputDevices.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <memory>
#include <string>

namespace tavro::evdev {

class CaptureThread;

/// Takes the keys from the kernel's input devices, below every display server: for Wayland and the console.
///
/// The keyboards are read all the while the tap is on, but grabbed only while the client wants the keys that
/// play. Otherwise every key reaches the system by itself and nothing can be swallowed, the hotkey neither;
/// the client hears of the keys all the same. The client is called on a thread of the tap's own.
class KeyboardTapAdapter : public KeyboardTap {
public:
    /// The guard outlives this. Without one, a program that is stopped or hangs keeps the keyboards.
    explicit KeyboardTapAdapter(InputDevices devices = {}, guard::GuardProcess* guard = nullptr);
    ~KeyboardTapAdapter() override;

    /// The system has nothing to ask the user with, so that `prompts` changes nothing.
    [[nodiscard]] bool isTrusted(bool prompts) override;
    [[nodiscard]] bool create(Client& client) override;
    void enable(bool isOn) override;
    void updateVerdicts() override;
    void dispose() override;
    [[nodiscard]] std::string adviceOnTrust() const override;

private:
    const InputDevices devices_;
    guard::GuardProcess* guard_;
    std::unique_ptr<CaptureThread> thread_;
};

} // namespace tavro::evdev
