#include "PerformanceModel/PresetText.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using tavro::PresetText;
    const auto presets = PresetText::decodeList({reinterpret_cast<const char*>(data), size});
    if (presets) {
        const auto text = PresetText::encodeList(*presets);
        tavro::require(text.has_value(), "what was read can be written");
        tavro::require(PresetText::decodeList(*text) == presets,
                       "what was read is read again after it was written");
    }
    return 0;
}
