#pragma once

#include <QString>

namespace tavro {

/// Names of preset files and names of presets.
class PresetFileName {
public:
    PresetFileName() = delete;

    /// The path with the extension of presets behind it, unless it has that already, in whatever case.
    [[nodiscard]] static QString withExtension(const QString& path);

    /// The name of the file without folder and extension.
    [[nodiscard]] static QString presetName(const QString& path);

    /// A file's name for a preset, without a folder. What no file can bear is replaced; it may be empty.
    [[nodiscard]] static QString forPreset(const QString& presetName);
};

} // namespace tavro
