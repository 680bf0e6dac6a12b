#pragma once

#include "Updates/UpdateError.h"

#include <optional>
#include <utility>

namespace tavro {

/// Why something did not work: an error of the update service, or one of the system (network, files, a text
/// that is no manifest), which is told in the system's own words.
class UpdateFailure {
public:
    // Errors are returned where a failure is expected.
    // NOLINTNEXTLINE(google-explicit-constructor)
    UpdateFailure(UpdateError error) : description_(error.description()), error_(std::move(error)) {}

    [[nodiscard]] static UpdateFailure ofSystem(const QString& description) {
        return UpdateFailure(description);
    }

    /// Nothing when the system failed.
    [[nodiscard]] const std::optional<UpdateError>& error() const { return error_; }

    /// What the user is told.
    [[nodiscard]] const QString& description() const { return description_; }

    friend bool operator==(const UpdateFailure&, const UpdateFailure&) = default;

private:
    explicit UpdateFailure(QString description) : description_(std::move(description)) {}

    QString description_;
    std::optional<UpdateError> error_;
};

} // namespace tavro
