#pragma once

#include "PlatformInterfaces/KeyboardTap.h"

#include <vector>

namespace tavro::headless {

/// A tap that sees no keyboard and records what it is asked. What it shall answer is set in its fields, and
/// events are handed to its client by calling the client. By default there is nothing to tap.
class KeyboardTapAdapter final : public KeyboardTap {
public:
    enum class Call { isTrusted, isTrustedWithPrompt, create, enable, disable, updateVerdicts, dispose };

    bool answersTrusted = true;
    bool answersCreated = false;
    std::string advice;

    /// Everything that was asked, in order.
    std::vector<Call> calls;

    /// Null without a tap.
    [[nodiscard]] Client* client() const { return client_; }

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

    [[nodiscard]] bool isTrusted(bool prompts) override;
    [[nodiscard]] bool create(Client& client) override;
    void enable(bool isOn) override;
    void updateVerdicts() override;
    void dispose() override;
    [[nodiscard]] std::string adviceOnTrust() const override;

private:
    Client* client_ = nullptr;
    bool isEnabled_ = false;
};

} // namespace tavro::headless
