#include "Presets/PresetSelection.h"

#include "Preferences/AppPreferences.h"
#include "Presets/PresetStore.h"

#include <algorithm>
#include <utility>

namespace tavro {

PresetSelection PresetSelection::load(PresetStore& store, Preferences& preferences) {
    PresetSelection selection;
    selection.presets = store.load();
    selection.selectedID = preferences.loadSelectedPresetID(selection.presets);
    return selection;
}

const TAVROPreset* PresetSelection::find(const std::string& id) const {
    const auto found = std::ranges::find(presets, id, &TAVROPreset::id);
    return found == presets.end() ? nullptr : &*found;
}

const TAVROPreset& PresetSelection::initialPreset() const {
    const auto* const selected = find(selectedID);
    return selected != nullptr ? *selected : TAVROPreset::defaultPreset();
}

void PresetSelection::upsert(TAVROPreset preset) {
    const auto found = std::ranges::find(presets, preset.id, &TAVROPreset::id);
    if (found != presets.end()) {
        *found = std::move(preset);
    } else {
        presets.push_back(std::move(preset));
    }
}

} // namespace tavro
