#pragma once

#include "PerformanceModel/TAVROPreset.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tavro {

/// Presets as texts: one in the form of a preset file, and a list in the form in which it is stored.
class PresetText {
public:
    PresetText() = delete;

    /// Indented, the keys of every object sorted, a line end behind it. Nothing when a text of the preset is
    /// not UTF-8.
    [[nodiscard]] static std::optional<std::string> encodeFile(const TAVROPreset& preset);

    /// Throws `JsonTextError` when it is no JSON, `DecodingError` when the JSON is no preset.
    [[nodiscard]] static TAVROPreset decodeFile(std::string_view utf8);

    /// A JSON array without white space. Nothing when a text of a preset is not UTF-8.
    [[nodiscard]] static std::optional<std::string> encodeList(std::span<const TAVROPreset> presets);

    /// Nothing when a single entry cannot be read.
    [[nodiscard]] static std::optional<std::vector<TAVROPreset>> decodeList(std::string_view utf8);
};

} // namespace tavro
