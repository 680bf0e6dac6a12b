#pragma once

#include <optional>
#include <string>

namespace tavro {

/// Where the system keeps which programs start when the user logs in, as far as it concerns this one.
class LoginItemService {
public:
    enum class Status {
        notRegistered,
        enabled,
        /// Registered, but the user has switched it off in the system's own settings.
        requiresApproval,
        /// The system cannot make sense of what is there.
        notFound,
    };

    LoginItemService() = default;
    LoginItemService(const LoginItemService&) = delete;
    LoginItemService& operator=(const LoginItemService&) = delete;
    virtual ~LoginItemService() = default;

    [[nodiscard]] virtual Status status() const = 0;

    /// Makes the running program start at login. Nothing when that worked, otherwise why not.
    [[nodiscard]] virtual std::optional<std::string> registerItem() = 0;

    /// The opposite. Nothing when that worked, otherwise why not.
    [[nodiscard]] virtual std::optional<std::string> unregisterItem() = 0;

    /// One sentence for the user: what the item is on this system. Empty where the usual words fit.
    [[nodiscard]] virtual std::string note() const = 0;
};

} // namespace tavro
