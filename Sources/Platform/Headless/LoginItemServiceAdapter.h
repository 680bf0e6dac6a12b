#pragma once

#include "PlatformInterfaces/LoginItemService.h"

#include <vector>

namespace tavro::headless {

/// A login item that is only a field, and records what it is asked.
class LoginItemServiceAdapter final : public LoginItemService {
public:
    enum class Call { registerItem, unregisterItem };

    /// What is reported. A change that works moves it, one that fails leaves it.
    Status reportedStatus = Status::notRegistered;

    /// When set, every change fails with this reason.
    std::optional<std::string> failure;

    /// Every change that was asked for, in order.
    std::vector<Call> calls;

    [[nodiscard]] Status status() const override { return reportedStatus; }

    [[nodiscard]] std::optional<std::string> registerItem() override {
        return change(Call::registerItem, Status::enabled);
    }

    [[nodiscard]] std::optional<std::string> unregisterItem() override {
        return change(Call::unregisterItem, Status::notRegistered);
    }

    /// What `note` answers.
    std::string answersNote;

    [[nodiscard]] std::string note() const override { return answersNote; }

private:
    std::optional<std::string> change(Call call, Status result) {
        calls.push_back(call);
        if (!failure) {
            reportedStatus = result;
        }
        return failure;
    }
};

} // namespace tavro::headless
