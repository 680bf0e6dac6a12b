#pragma once

#include "PlatformInterfaces/Application/BundleReader.h"

namespace tavro::macos {

/// Bundles with Core Foundation.
class BundleReaderAdapter final : public BundleReader {
public:
    [[nodiscard]] std::optional<Bundle> read(const QString& path) const override;
};

} // namespace tavro::macos
