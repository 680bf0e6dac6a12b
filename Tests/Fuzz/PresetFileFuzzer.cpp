#include "PerformanceModel/BoundedJson.h"
#include "PerformanceModel/JsonDecoding.h"
#include "PerformanceModel/PresetText.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace {

std::optional<tavro::TAVROPreset> decoded(std::string_view text) {
    try {
        return tavro::PresetText::decodeFile(text);
    } catch (const tavro::JsonTextError& error) {
        tavro::require(*error.what() != '\0', "an error says something");
    } catch (const tavro::DecodingError& error) {
        tavro::require(*error.what() != '\0', "an error says something");
    }
    return std::nullopt;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto preset = decoded({reinterpret_cast<const char*>(data), size});
    if (preset) {
        const auto text = tavro::PresetText::encodeFile(*preset);
        tavro::require(text && decoded(*text) == preset, "what was read is read again after it was written");
    }
    return 0;
}
