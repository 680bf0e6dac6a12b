#pragma once

#include <QString>

#include <optional>

namespace tavro {

/// What the program tells about itself, by key, such as "CFBundleShortVersionString".
class ApplicationInformation {
public:
    ApplicationInformation() = default;
    ApplicationInformation(const ApplicationInformation&) = delete;
    ApplicationInformation& operator=(const ApplicationInformation&) = delete;
    virtual ~ApplicationInformation() = default;

    /// Nothing when there is no value, or one that is no text.
    [[nodiscard]] virtual std::optional<QString> value(const QString& key) const = 0;
};

} // namespace tavro
