#include "Presets/PresetLibrary.h"

#include "PerformanceModel/PresetText.h"
#include "Preferences/PreferenceKey.h"
#include "Presets/PresetFile.h"
#include "Presets/PresetFileName.h"

#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <utility>

namespace tavro {

namespace {

/// Any identifier of its own would do; it must never change.
const QUuid derivedIdentifiers(QStringLiteral("{6f1f7f4e-3a0c-4f53-9a57-51d2b0c4c8e1}"));

/// As one of the user's own. The built-in preset's identifier is not to be taken from it, and no identifier
/// at all would make strangers replace each other; the one that is given instead depends on the content, so
/// that the same file does not join twice.
TAVROPreset asCustom(TAVROPreset preset) {
    if (preset.id.empty() || preset.id == TAVROPreset::defaultPreset().id) {
        // There is a text: what comes out of a file is UTF-8.
        const auto content = QByteArray::fromStdString(PresetText::encodeFile(preset).value_or(""));
        preset.id =
            QUuid::createUuidV5(derivedIdentifiers, content).toString(QUuid::WithoutBraces).toStdString();
    }
    preset.isBuiltIn = false;
    return preset;
}

/// A file that the user has not named in full, and so has not agreed to replace.
void requireNewFile(const QString& named, const QString& completed) {
    if (completed != named && QFileInfo::exists(completed)) {
        throw PresetFileError(PresetFileError::Kind::unwritable, completed,
                              PresetLibrary::tr("is there already; to replace it, give its whole name"));
    }
}

} // namespace

PresetLibrary::PresetLibrary(PerformanceController& performance, PresetStore& store, UserDefaults& defaults,
                             std::function<void()> systemBeep, PresetSelection initial)
    : performance_(performance), store_(store), defaults_(defaults), systemBeep_(std::move(systemBeep)),
      selection_(std::move(initial)) {}

void PresetLibrary::setSelectedPresetID(const QString& id) {
    auto wanted = id.toStdString();
    if (wanted == selection_.selectedID || selection_.find(wanted) == nullptr) {
        return;
    }
    selection_.selectedID = std::move(wanted);
    loadSelectedPreset();
    Q_EMIT selectedPresetIDChanged();
}

void PresetLibrary::loadSelectedPreset() {
    const auto* const preset = selection_.find(selection_.selectedID);
    if (preset == nullptr) {
        return;
    }
    defaults_.setValue(PreferenceKey::selectedPresetID.name, preset->id);
    performance_.loadState(preset->state);
}

void PresetLibrary::upsertPreset(const TAVROPreset& preset) {
    selection_.upsert(preset);
    Q_EMIT presetsChanged();
}

QString PresetLibrary::currentPresetNameForSaving() const {
    const auto* const preset = selection_.find(selection_.selectedID);
    return QString::fromStdString(preset != nullptr ? preset->name
                                                    : PresetStore::nextPresetName(selection_.presets));
}

QString PresetLibrary::suggestedFileForSaving() const {
    auto name = PresetFileName::forPreset(currentPresetNameForSaving());
    if (name.isEmpty()) {
        name = QString::fromStdString(PresetStore::nextPresetName(selection_.presets));
    }
    return PresetFileName::withExtension(presetDirectory() + QLatin1Char('/') + name);
}

QString PresetLibrary::presetDirectory() {
    return PresetStore::defaultPresetDirectory();
}

QString PresetLibrary::presetNameFilter() {
    return PresetStore::fileType().nameFilter;
}

bool PresetLibrary::openPresetFromFile(const QString& path) {
    try {
        adopt(asCustom(PresetFile::read(path)));
        return true;
    } catch (const PresetFileError& error) {
        Q_EMIT openFailed(tr("The preset could not be opened"), error.text());
        return false;
    }
}

bool PresetLibrary::savePresetToFile(const QString& path) {
    const auto file = PresetFileName::withExtension(path);
    const TAVROPreset preset{.id = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString(),
                             .name = PresetFileName::presetName(file).toStdString(),
                             .state = performance_.state(),
                             .isBuiltIn = false};
    try {
        requireNewFile(path, file);
        PresetStore::write(preset, file);
    } catch (const PresetFileError& error) {
        systemBeep_();
        Q_EMIT saveFailed(tr("The preset could not be saved"), error.text());
        return false;
    }
    adopt(preset);
    return true;
}

void PresetLibrary::adopt(const TAVROPreset& preset) {
    takeInStoredPresets();
    selection_.upsert(preset);
    const bool isAnother = std::exchange(selection_.selectedID, preset.id) != preset.id;
    store_.save(selection_.presets);
    loadSelectedPreset();
    Q_EMIT presetsChanged();
    if (isAnother) {
        Q_EMIT selectedPresetIDChanged();
    }
}

void PresetLibrary::takeInStoredPresets() {
    for (auto& stored : store_.load()) {
        if (selection_.find(stored.id) == nullptr) {
            selection_.upsert(std::move(stored));
        }
    }
}

} // namespace tavro
