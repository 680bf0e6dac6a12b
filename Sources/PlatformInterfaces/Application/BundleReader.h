#pragma once

#include <QString>

#include <optional>

namespace tavro {

/// Looks into application bundles.
class BundleReader {
public:
    struct Bundle {
        /// Nothing when the bundle does not tell, or tells something that is no text.
        std::optional<QString> identifier;
        std::optional<QString> shortVersion;
    };

    BundleReader() = default;
    BundleReader(const BundleReader&) = delete;
    BundleReader& operator=(const BundleReader&) = delete;
    virtual ~BundleReader() = default;

    /// Nothing when this is no bundle.
    [[nodiscard]] virtual std::optional<Bundle> read(const QString& path) const = 0;
};

} // namespace tavro
