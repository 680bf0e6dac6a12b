#pragma once

#include <QString>

#include <map>
#include <optional>

namespace tavro::headless {

/// Tells what its field says.
struct ApplicationInformationAdapter {
    std::map<QString, QString> values;

    [[nodiscard]] std::optional<QString> operator()(const QString& key) const {
        const auto found = values.find(key);
        return found != values.end() ? std::optional(found->second) : std::nullopt;
    }
};

} // namespace tavro::headless
