#pragma once

#include <QString>

#include <optional>

#include <CoreFoundation/CoreFoundation.h>

namespace tavro::macos {

/// The information dictionary of a bundle.
class BundleValues {
public:
    BundleValues() = delete;

    /// Nothing when there is no such value, or one that is no text.
    [[nodiscard]] static std::optional<QString> text(CFBundleRef bundle, const QString& key);

    /// The same of the program's own bundle.
    [[nodiscard]] static std::optional<QString> ownText(const QString& key);
};

} // namespace tavro::macos
