#include "Presets/PresetStore.h"

#include "PerformanceModel/PresetText.h"
#include "Preferences/AppPreferences.h"
#include "Presets/PresetFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

#include <algorithm>
#include <iterator>

namespace tavro {

std::vector<TAVROPreset> PresetStore::load() {
    std::vector<TAVROPreset> presets{TAVROPreset::defaultPreset()};
    const auto data = storedPresetData();
    const auto stored = data ? PresetText::decodeList(data->bytes) : std::nullopt;
    if (stored) {
        std::ranges::copy_if(*stored, std::back_inserter(presets), std::not_fn(&TAVROPreset::isBuiltIn));
    }
    return presets;
}

bool PresetStore::save(std::span<const TAVROPreset> presets) {
    std::vector<TAVROPreset> custom;
    std::ranges::copy_if(presets, std::back_inserter(custom), std::not_fn(&TAVROPreset::isBuiltIn));
    auto list = PresetText::encodeList(custom);
    return list &&
           defaults_.setValue(PreferenceKey::customPresets.name, UserDefaults::Data{*std::move(list)});
}

std::optional<UserDefaults::Data> PresetStore::storedPresetData() {
    return preferences_.storedData(PreferenceKey::customPresets);
}

std::string PresetStore::nextPresetName(std::span<const TAVROPreset> presets) {
    const auto nameOf = [](std::ptrdiff_t number) { return "Preset " + std::to_string(number); };
    auto number = std::ranges::count(presets, false, &TAVROPreset::isBuiltIn) + 1;
    while (std::ranges::find(presets, nameOf(number), &TAVROPreset::name) != presets.end()) {
        ++number;
    }
    return nameOf(number);
}

void PresetStore::write(const TAVROPreset& preset, const QString& path) {
    PresetFile::write(preset, path);
}

QString PresetStore::defaultPresetDirectory() {
    auto documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (documents.isEmpty()) {
        documents = QDir::homePath();
    }
    const QDir folder(documents + QStringLiteral("/TAVRO Presets"));
    folder.mkpath(QStringLiteral("."));
    return folder.path();
}

const PresetStore::FileType& PresetStore::fileType() {
    static const FileType type{.extension = QStringLiteral("tvp"),
                               .nameFilter =
                                   QCoreApplication::translate("tavro::PresetStore", "TAVRO presets") +
                                   QStringLiteral(" (*.tvp)")};
    return type;
}

} // namespace tavro
