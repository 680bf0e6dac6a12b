#pragma once

#include <string>
#include <vector>

namespace tavro {

/// The name of a stored setting, and the names under which earlier generations of the program stored it.
struct PreferenceKey {
    std::string name;
    /// Looked up in this order when there is nothing under the name.
    std::vector<std::string> legacyNames;

    /// JSON data of `ToggleHotkey`.
    static const PreferenceKey globalPlayHotkey;
    /// Text: a preset's identifier.
    static const PreferenceKey selectedPresetID;
    /// Boolean.
    static const PreferenceKey launchAtLogin;
    /// Text: the boot in which the window was minimized last.
    static const PreferenceKey lastMinimizedBootID;
    /// JSON data: an array of presets.
    static const PreferenceKey customPresets;
    /// Boolean; absent is false. No earlier generation had it.
    static const PreferenceKey tutorialCompleted;

    /// Text: the name of a MIDI system. Boolean; absent is true. No earlier generation had them.
    static const PreferenceKey midiSystem;
    static const PreferenceKey midiShortPeriod;

    /// The databases of the earlier generations, in the order in which they are looked through.
    static const std::vector<std::string> legacySuites;
};

} // namespace tavro
