#pragma once

#include <nlohmann/json_fwd.hpp>

#include <cstdint>
#include <string_view>

namespace tavro {

class PerformanceController;

/// One of the controller's bindings, by name.
struct ControlBinding {
    std::string_view name;
    bool isFlag;
    /// Sets the binding; a flag is 0 or 1.
    void (*set)(PerformanceController& controller, std::int64_t value);

    /// The value for `set`. Throws `DecodingError` for a value of the wrong type.
    [[nodiscard]] std::int64_t decode(const nlohmann::ordered_json& json) const;

    /// Null for an unknown name.
    [[nodiscard]] static const ControlBinding* find(std::string_view name);
};

} // namespace tavro
