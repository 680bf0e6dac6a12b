#pragma once

#include "PlatformInterfaces/Application/ApplicationInformation.h"

namespace tavro::macos {

/// The information dictionary of the program's own bundle.
class ApplicationInformationAdapter final : public ApplicationInformation {
public:
    [[nodiscard]] std::optional<QString> value(const QString& key) const override;
};

} // namespace tavro::macos
