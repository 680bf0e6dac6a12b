#pragma once

#include <QString>

#include <optional>
#include <utility>

namespace tavro {

/// What the update service itself finds wrong.
class UpdateError {
public:
    enum class Kind { invalidManifest, commandFailed, invalidFeed, integrityCheckFailed, invalidApplication };

    [[nodiscard]] static UpdateError invalidManifest(const QString& message);
    [[nodiscard]] static UpdateError commandFailed(const QString& message);
    [[nodiscard]] static UpdateError invalidFeed();
    [[nodiscard]] static UpdateError integrityCheckFailed();
    [[nodiscard]] static UpdateError invalidApplication();

    [[nodiscard]] Kind kind() const { return kind_; }

    /// What the user is told.
    [[nodiscard]] const QString& description() const { return description_; }

    friend bool operator==(const UpdateError&, const UpdateError&) = default;

private:
    UpdateError(Kind kind, QString description);

    Kind kind_;
    QString description_;
};

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
