#pragma once

#include "Performance/PerformanceController.h"
#include "Presets/PresetSelection.h"
#include "Presets/PresetStore.h"

#include <QObject>
#include <QString>

#include <functional>
#include <vector>

namespace tavro {

/// The presets of the running program: which there are, which one is chosen, and their ways from and to
/// files. Choosing one loads it. Main thread only.
class PresetLibrary : public QObject {
    Q_OBJECT

public:
    /// The collaborators must outlive this. The performance is expected to have begun with the selection's
    /// initial preset; it is not touched here.
    PresetLibrary(PerformanceController& performance, PresetStore& store, UserDefaults& defaults,
                  std::function<void()> systemBeep, PresetSelection initial);

    /// The built-in preset first.
    [[nodiscard]] const std::vector<TAVROPreset>& presets() const { return selection_.presets; }

    [[nodiscard]] QString selectedPresetID() const { return QString::fromStdString(selection_.selectedID); }

    /// Another identifier is loaded when a preset has it, and otherwise ignored. The one that is chosen
    /// already does nothing.
    void setSelectedPresetID(const QString& id);

    /// Replaces the performance's settings by those of the chosen preset, silences what sounds, and stores
    /// the choice. Nothing when there is no such preset.
    void loadSelectedPreset();

    /// Takes the place of the preset with the same identifier, or comes last. Stores nothing.
    void upsertPreset(const TAVROPreset& preset);

    /// The chosen preset's name; when there is no such preset, the name of the next new one.
    [[nodiscard]] QString currentPresetNameForSaving() const;

    /// What a save dialog proposes: the name above in the preset folder, as far as a file can bear it.
    [[nodiscard]] QString suggestedFileForSaving() const;

    /// Where file dialogs start, and what they filter by.
    [[nodiscard]] static QString presetDirectory();
    [[nodiscard]] static QString presetNameFilter();

    /// The file's preset joins the presets, is chosen, loaded and stored. When it cannot be read, everything
    /// stays as it is and `openFailed` tells why; false then.
    bool openPresetFromFile(const QString& path);

    /// Writes the settings as they are to a file, as a new preset that is named like it; a name that does not
    /// end in the extension of presets gets it. The preset joins the others, is chosen and stored. When the
    /// file cannot be written, everything stays as it is, the system beeps and `saveFailed` tells why; false
    /// then.
    bool savePresetToFile(const QString& path);

Q_SIGNALS:
    void presetsChanged();
    void selectedPresetIDChanged();
    /// For an alert. The text is plain, and names the file and the reason.
    void openFailed(const QString& title, const QString& text);
    void saveFailed(const QString& title, const QString& text);

private:
    void adopt(const TAVROPreset& preset);
    /// What another running copy of the program has stored meanwhile would be lost with the next list.
    void takeInStoredPresets();

    PerformanceController& performance_;
    PresetStore& store_;
    UserDefaults& defaults_;
    std::function<void()> systemBeep_;
    PresetSelection selection_;
};

} // namespace tavro
