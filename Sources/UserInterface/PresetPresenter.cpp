#include "UserInterface/PresetPresenter.h"

namespace tavro {

namespace {

/// The file's path; what is elsewhere is named as it stands, and then found to be no file.
QString pathOf(const QUrl& file) {
    return file.isLocalFile() ? file.toLocalFile() : file.toString();
}

} // namespace

PresetPresenter::PresetPresenter(PresetLibrary& library) : library_(library) {
    connect(&library_, &PresetLibrary::presetsChanged, this, &PresetPresenter::presetsChanged);
    connect(&library_, &PresetLibrary::selectedPresetIDChanged, this, &PresetPresenter::selectedChanged);
    connect(&library_, &PresetLibrary::openFailed, this, &PresetPresenter::failed);
    connect(&library_, &PresetLibrary::saveFailed, this, &PresetPresenter::failed);
}

QVariantList PresetPresenter::presets() const {
    QVariantList entries;
    for (const auto& preset : library_.presets()) {
        entries.append(QVariantMap{{QStringLiteral("text"), QString::fromStdString(preset.name)},
                                   {QStringLiteral("value"), QString::fromStdString(preset.id)}});
    }
    return entries;
}

QString PresetPresenter::selected() const {
    return library_.selectedPresetID();
}

void PresetPresenter::select(const QString& id) {
    library_.setSelectedPresetID(id);
}

QString PresetPresenter::nameFilter() {
    return PresetLibrary::presetNameFilter();
}

QString PresetPresenter::fileExtension() {
    return PresetStore::fileType().extension;
}

QUrl PresetPresenter::folder() {
    return QUrl::fromLocalFile(PresetLibrary::presetDirectory());
}

QUrl PresetPresenter::suggestedFile() const {
    return QUrl::fromLocalFile(library_.suggestedFileForSaving());
}

void PresetPresenter::openFile(const QUrl& file) {
    library_.openPresetFromFile(pathOf(file));
}

void PresetPresenter::saveFile(const QUrl& file) {
    library_.savePresetToFile(pathOf(file));
}

} // namespace tavro
