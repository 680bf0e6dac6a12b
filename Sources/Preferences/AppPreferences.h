#pragma once

#include "KeyboardInput/ToggleHotkey.h"
#include "PlatformInterfaces/BootClock.h"
#include "PlatformInterfaces/UserDefaults.h"
#include "Preferences/PreferenceKey.h"

#include <optional>
#include <string>
#include <vector>

namespace tavro {

struct TAVROPreset;

/// The application's stored settings, those of its earlier generations taken over when they are first asked
/// for. Nothing is held in memory, and no failure reaches the caller: what cannot be read counts as absent,
/// what cannot be written is not. Main thread only.
class Preferences {
public:
    /// Both must outlive this.
    Preferences(UserDefaults& defaults, const BootClock& bootClock)
        : defaults_(defaults), bootClock_(bootClock) {}

    /// What is stored under the key's name. When nothing is, the first value under its legacy names, in the
    /// standard database and then in the legacy suites, which is copied to the name; the legacy value stays.
    [[nodiscard]] std::optional<UserDefaults::Data> storedData(const PreferenceKey& key);
    [[nodiscard]] std::optional<std::string> storedString(const PreferenceKey& key);
    /// A value of any type counts.
    [[nodiscard]] std::optional<bool> storedBool(const PreferenceKey& key);

    /// The default when none is stored or it cannot be read.
    [[nodiscard]] ToggleHotkey loadGlobalPlayHotkey();
    void saveGlobalPlayHotkey(const ToggleHotkey& hotkey);

    /// The stored identifier when one of the presets has it, otherwise "default". What is stored stays.
    [[nodiscard]] std::string loadSelectedPresetID(const std::vector<TAVROPreset>& availablePresets);

    /// The name of the MIDI system that the user chose; empty when none was.
    [[nodiscard]] std::string loadMidiSystem();
    void saveMidiSystem(const std::string& name);

    /// Whether a MIDI system that works in periods is asked for a short one; true when nothing is stored.
    [[nodiscard]] bool loadAsksForShortPeriod();
    void saveAsksForShortPeriod(bool asksForIt);

    /// A text that is the same until the next boot. Throws `std::range_error` when the system tells neither
    /// an identifier nor usable times.
    [[nodiscard]] std::string currentBootIdentifier() const;

    /// Whether this launch is the first one of this boot while launch at login is on. Asking counts as the
    /// launch: the second answer in a boot is no.
    [[nodiscard]] bool shouldMinimizeLaunchAtLoginWindow();

private:
    UserDefaults& defaults_;
    const BootClock& bootClock_;
};

} // namespace tavro
