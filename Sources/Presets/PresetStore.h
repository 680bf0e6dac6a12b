#pragma once

#include "PerformanceModel/TAVROPreset.h"
#include "PlatformInterfaces/UserDefaults.h"

#include <QString>

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tavro {

class Preferences;

/// The user's own presets in the stored settings, and what goes for all of them. Nothing is held in memory.
/// Main thread only.
class PresetStore {
public:
    /// The kind of file that a preset is passed on in.
    struct FileType {
        /// Without a dot.
        QString extension;
        /// What file dialogs filter by, "Name (*.extension)".
        QString nameFilter;
    };

    /// Both must outlive this.
    PresetStore(UserDefaults& defaults, Preferences& preferences)
        : defaults_(defaults), preferences_(preferences) {}

    /// The built-in preset, then the stored ones in their order. A stored list that cannot be read counts as
    /// none, and stays stored.
    [[nodiscard]] std::vector<TAVROPreset> load();

    /// Stores the presets that are not built in, in place of the list that is stored; none of them is an
    /// empty list. False when they could not be stored.
    bool save(std::span<const TAVROPreset> presets);

    /// The stored list as it is; one of an earlier generation of the program is taken over.
    [[nodiscard]] std::optional<UserDefaults::Data> storedPresetData();

    /// "Preset " and a number that makes it differ from all names in the list. It counts on from the presets
    /// that are not built in.
    [[nodiscard]] static std::string nextPresetName(std::span<const TAVROPreset> presets);

    /// Writes a preset file. Throws `PresetFileError`.
    static void write(const TAVROPreset& preset, const QString& path);

    /// Where file dialogs start: a folder among the user's documents. It is made when it is not there;
    /// whether that succeeds is not told.
    [[nodiscard]] static QString defaultPresetDirectory();

    [[nodiscard]] static const FileType& fileType();

private:
    UserDefaults& defaults_;
    Preferences& preferences_;
};

} // namespace tavro
