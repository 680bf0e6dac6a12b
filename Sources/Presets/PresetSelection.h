#pragma once

#include "PerformanceModel/TAVROPreset.h"

#include <string>
#include <vector>

namespace tavro {

class Preferences;
class PresetStore;

/// The presets that are offered, and the one that is chosen.
struct PresetSelection {
    std::vector<TAVROPreset> presets{TAVROPreset::defaultPreset()};
    std::string selectedID = TAVROPreset::defaultPreset().id;

    /// What is stored.
    [[nodiscard]] static PresetSelection load(PresetStore& store, Preferences& preferences);

    /// The first preset with this identifier, or null.
    [[nodiscard]] const TAVROPreset* find(const std::string& id) const;

    /// What a new run begins with: the chosen preset, or the built-in one when there is no such preset.
    [[nodiscard]] const TAVROPreset& initialPreset() const;

    /// Takes the place of the preset with the same identifier, or comes last.
    void upsert(TAVROPreset preset);
};

} // namespace tavro
