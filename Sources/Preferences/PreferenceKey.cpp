#include "Preferences/PreferenceKey.h"

namespace tavro {

namespace {

PreferenceKey inEveryGeneration(const std::string& setting) {
    return {.name = "TAVRO." + setting, .legacyNames = {"Pelmont." + setting, "Sarvik." + setting}};
}

} // namespace

const PreferenceKey PreferenceKey::globalPlayHotkey = inEveryGeneration("GlobalPlayHotkey.v1");
const PreferenceKey PreferenceKey::selectedPresetID = inEveryGeneration("SelectedPresetID.v1");
const PreferenceKey PreferenceKey::launchAtLogin = inEveryGeneration("LaunchAtLogin.v1");
const PreferenceKey PreferenceKey::lastMinimizedBootID = inEveryGeneration("LastMinimizedBootID.v1");
const PreferenceKey PreferenceKey::customPresets = inEveryGeneration("CustomPresets.v1");
const PreferenceKey PreferenceKey::tutorialCompleted{.name = "TAVRO.TutorialCompleted.v1", .legacyNames = {}};
const PreferenceKey PreferenceKey::midiSystem{.name = "TAVRO.MIDISystem.v1", .legacyNames = {}};
const PreferenceKey PreferenceKey::midiShortPeriod{.name = "TAVRO.MIDIShortPeriod.v1", .legacyNames = {}};

const std::vector<std::string> PreferenceKey::legacySuites{"com.vessiron.sarvik.experimental",
                                                           "com.vessiron.sarvik"};

} // namespace tavro
