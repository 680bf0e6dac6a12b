#pragma once

#include "PlatformInterfaces/Application/ApplicationInformation.h"

#include <map>

namespace tavro::linuxos {

/// What was built into the program; environment variables of the same names, when set, stand above it.
class ApplicationInformationAdapter final : public ApplicationInformation {
public:
    explicit ApplicationInformationAdapter(std::map<QString, QString> builtIn)
        : builtIn_(std::move(builtIn)) {}

    [[nodiscard]] std::optional<QString> value(const QString& key) const override;

private:
    std::map<QString, QString> builtIn_;
};

} // namespace tavro::linuxos
