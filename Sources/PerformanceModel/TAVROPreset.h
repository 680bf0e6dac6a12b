#pragma once

#include "PerformanceModel/PerformanceState.h"

#include <nlohmann/json_fwd.hpp>

#include <string>

namespace tavro {

/// A named, complete snapshot of the settings.
struct TAVROPreset {
    /// Stable; "default" is the built-in preset's.
    std::string id;
    /// UTF-8, as is `id`.
    std::string name;
    PerformanceState state;
    bool isBuiltIn = false;

    /// The only one that is built in: the default settings.
    [[nodiscard]] static const TAVROPreset& defaultPreset();

    /// The four keys in the order of the fields.
    [[nodiscard]] nlohmann::ordered_json encode() const;

    /// The preset of a JSON object. Throws `DecodingError` when one of the four keys is missing or holds a
    /// value of the wrong type.
    [[nodiscard]] static TAVROPreset decode(const nlohmann::ordered_json& json);

    friend bool operator==(const TAVROPreset&, const TAVROPreset&) = default;
};

} // namespace tavro
