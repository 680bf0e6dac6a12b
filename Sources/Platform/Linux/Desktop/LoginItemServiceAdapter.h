#pragma once

#include "PlatformInterfaces/LoginItemService.h"

#include <filesystem>

namespace tavro::linuxos {

/// The entry tavro.desktop in the user's autostart folder. There and not hidden is enabled; hidden requires
/// approval; no file is not registered; one that no desktop could start is not found.
///
/// Registering replaces a hidden entry too: whoever switches it on in the program has seen a switch that was
/// off and wants it on. On Linux both switches belong to the user, and no third party stands behind the
/// entry.
class LoginItemServiceAdapter final : public LoginItemService {
public:
    /// The running program and the user's own folder.
    LoginItemServiceAdapter();

    /// The folder need not exist.
    LoginItemServiceAdapter(const std::filesystem::path& autostartFolder, std::filesystem::path program);

    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::optional<std::string> registerItem() override;
    [[nodiscard]] std::optional<std::string> unregisterItem() override;
    [[nodiscard]] std::string note() const override;

private:
    std::filesystem::path entry_;
    std::filesystem::path program_;
};

} // namespace tavro::linuxos
