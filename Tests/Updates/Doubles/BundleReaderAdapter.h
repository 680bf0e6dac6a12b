#pragma once

#include "PlatformInterfaces/Application/BundleReader.h"

#include <map>

namespace tavro::headless {

/// Finds the bundles of its field.
class BundleReaderAdapter final : public BundleReader {
public:
    /// By the name of the bundle.
    std::map<QString, Bundle> bundles;

    [[nodiscard]] std::optional<Bundle> read(const QString& path) const override {
        const auto found = bundles.find(path.mid(path.lastIndexOf(QLatin1Char('/')) + 1));
        return found != bundles.end() ? std::optional(found->second) : std::nullopt;
    }
};

} // namespace tavro::headless
