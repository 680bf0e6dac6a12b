#pragma once

#include <QString>

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

} // namespace tavro
