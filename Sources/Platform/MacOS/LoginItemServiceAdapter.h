#pragma once

#include "PlatformInterfaces/LoginItemService.h"

namespace tavro::macos {

/// The system's service for the main application. Before macOS 13 there is none: not found, and every change
/// fails.
class LoginItemServiceAdapter final : public LoginItemService {
public:
    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::optional<std::string> registerItem() override;
    [[nodiscard]] std::optional<std::string> unregisterItem() override;

    [[nodiscard]] std::string note() const override { return {}; }
};

} // namespace tavro::macos
