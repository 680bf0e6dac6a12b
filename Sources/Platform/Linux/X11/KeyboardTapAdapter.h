#pragma once

#include "Platform/Linux/Guard/GuardProcess.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <memory>
#include <string>

namespace tavro::x11 {

class TapThread;

/// The tap on an X server. It reserves the presses that the client wants, with a grab that ends at each
/// press, so that all other keys go their usual way even while one of these is held. The client is called on
/// a thread of the adapter's own; what `enable` and `updateVerdicts` ask for is done there soon after they
/// return.
class KeyboardTapAdapter final : public KeyboardTap {
public:
    /// The guard outlives this. An empty display means the one of the environment.
    explicit KeyboardTapAdapter(guard::GuardProcess& guard, std::string display = {});
    ~KeyboardTapAdapter() override;

    /// X lets every program see the keys.
    [[nodiscard]] bool isTrusted(bool prompts) override;
    [[nodiscard]] bool create(Client& client) override;
    void enable(bool isOn) override;
    void updateVerdicts() override;
    void dispose() override;

private:
    guard::GuardProcess& guard_;
    std::string display_;
    std::unique_ptr<TapThread> thread_;
};

} // namespace tavro::x11
