#include "Player/ControlBinding.h"

#include "Performance/PerformanceController.h"
#include "PerformanceModel/JsonDecoding.h"

#include <algorithm>
#include <array>
#include <string>

namespace tavro {

namespace {

using Controller = PerformanceController;

constexpr std::array<ControlBinding, 5> bindings{{
    {"holdBinding", true,
     [](Controller& controller, std::int64_t value) { controller.setHoldBinding(value != 0); }},
    {"smartHoldBinding", true,
     [](Controller& controller, std::int64_t value) { controller.setSmartHoldBinding(value != 0); }},
    {"chordEnabledBinding", true,
     [](Controller& controller, std::int64_t value) { controller.setChordEnabledBinding(value != 0); }},
    {"chordComplexityBinding", false,
     [](Controller& controller, std::int64_t value) { controller.setChordComplexityBinding(value); }},
    {"splitModeBinding", true,
     [](Controller& controller, std::int64_t value) { controller.setSplitModeBinding(value != 0); }},
}};

} // namespace

std::int64_t ControlBinding::decode(const nlohmann::ordered_json& json) const {
    const std::string key(name);
    return isFlag ? static_cast<std::int64_t>(JsonDecoding::flag(key, json))
                  : JsonDecoding::integer(key, json);
}

const ControlBinding* ControlBinding::find(std::string_view name) {
    const auto found = std::ranges::find(bindings, name, &ControlBinding::name);
    return found == bindings.end() ? nullptr : &*found;
}

} // namespace tavro
