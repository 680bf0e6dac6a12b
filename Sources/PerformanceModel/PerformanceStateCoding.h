#pragma once

#include "PerformanceModel/JsonDecoding.h"
#include "PerformanceModel/PerformanceState.h"

#include <nlohmann/json_fwd.hpp>

#include <string_view>
#include <vector>

namespace tavro {

/// The JSON form of `PerformanceState`: one object, its keys named like the fields and in their order.
class PerformanceStateCoding {
public:
    PerformanceStateCoding() = delete;

    /// All 18 keys, defaults included.
    [[nodiscard]] static nlohmann::ordered_json encode(const PerformanceState& state);

    /// Absent keys and null take the default, unknown keys are ignored, numbers are taken as they are.
    /// Throws `DecodingError` when the value is no object or a key holds a value of the wrong type.
    [[nodiscard]] static PerformanceState decode(const nlohmann::ordered_json& json);

    /// Stores one value under its JSON name; null stores the default. Throws `DecodingError`, and leaves the
    /// state as it was, for an unknown name or a value of the wrong type.
    static void decodeField(PerformanceState& state, std::string_view key,
                            const nlohmann::ordered_json& json);

    /// The JSON names of the fields in which two states differ, in declaration order.
    [[nodiscard]] static std::vector<std::string_view> differences(const PerformanceState& left,
                                                                   const PerformanceState& right);
};

} // namespace tavro
