#pragma once

#include "PlatformInterfaces/Application/ApplicationInformation.h"

#include <map>

namespace tavro::headless {

/// Tells what its field says.
class ApplicationInformationAdapter final : public ApplicationInformation {
public:
    std::map<QString, QString> values;

    [[nodiscard]] std::optional<QString> value(const QString& key) const override {
        const auto found = values.find(key);
        return found != values.end() ? std::optional(found->second) : std::nullopt;
    }
};

} // namespace tavro::headless
