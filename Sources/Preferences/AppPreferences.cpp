#include "Preferences/AppPreferences.h"

#include "PerformanceModel/TAVROPreset.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>

namespace tavro {

namespace {

template <class Type>
using Read = std::optional<Type> (UserDefaults::*)(const std::string&) const;

template <class Type>
std::optional<Type> firstOf(const UserDefaults& defaults, const std::vector<std::string>& names,
                            Read<Type> read) {
    for (const auto& name : names) {
        if (auto found = (defaults.*read)(name)) {
            return found;
        }
    }
    return std::nullopt;
}

template <class Type>
std::optional<Type> legacyValue(const UserDefaults& standard, const PreferenceKey& key, Read<Type> read) {
    if (key.legacyNames.empty()) {
        return std::nullopt;
    }
    if (auto found = firstOf(standard, key.legacyNames, read)) {
        return found;
    }
    for (const auto& name : PreferenceKey::legacySuites) {
        if (const auto suite = standard.suite(name)) {
            if (auto found = firstOf(*suite, key.legacyNames, read)) {
                return found;
            }
        }
    }
    return std::nullopt;
}

template <class Type>
std::optional<Type> stored(UserDefaults& defaults, const PreferenceKey& key, Read<Type> read) {
    if (auto current = (defaults.*read)(key.name)) {
        return current;
    }
    auto found = legacyValue(defaults, key, read);
    if (found) {
        defaults.setValue(key.name, *found);
    }
    return found;
}

} // namespace

std::optional<UserDefaults::Data> Preferences::storedData(const PreferenceKey& key) {
    return stored(defaults_, key, &UserDefaults::data);
}

std::optional<std::string> Preferences::storedString(const PreferenceKey& key) {
    return stored(defaults_, key, &UserDefaults::string);
}

std::optional<bool> Preferences::storedBool(const PreferenceKey& key) {
    return stored(defaults_, key, &UserDefaults::boolean);
}

ToggleHotkey Preferences::loadGlobalPlayHotkey() {
    const auto data = storedData(PreferenceKey::globalPlayHotkey);
    const auto hotkey = data ? ToggleHotkey::decode(data->bytes) : std::nullopt;
    return hotkey.value_or(ToggleHotkey());
}

void Preferences::saveGlobalPlayHotkey(const ToggleHotkey& hotkey) {
    defaults_.setValue(PreferenceKey::globalPlayHotkey.name, UserDefaults::Data{hotkey.encode()});
}

std::string Preferences::loadSelectedPresetID(const std::vector<TAVROPreset>& availablePresets) {
    const auto identifier = storedString(PreferenceKey::selectedPresetID);
    const bool isAvailable =
        identifier && std::any_of(availablePresets.begin(), availablePresets.end(),
                                  [&](const TAVROPreset& preset) { return preset.id == *identifier; });
    return isAvailable ? *identifier : "default";
}

std::string Preferences::loadMidiSystem() {
    return storedString(PreferenceKey::midiSystem).value_or("");
}

void Preferences::saveMidiSystem(const std::string& name) {
    defaults_.setValue(PreferenceKey::midiSystem.name, name);
}

bool Preferences::loadAsksForShortPeriod() {
    return storedBool(PreferenceKey::midiShortPeriod).value_or(true);
}

void Preferences::saveAsksForShortPeriod(bool asksForIt) {
    defaults_.setValue(PreferenceKey::midiShortPeriod.name, asksForIt);
}

std::string Preferences::currentBootIdentifier() const {
    if (auto identifier = bootClock_.identifier()) {
        return *identifier;
    }
    // Whole minutes: the difference of two clocks trembles.
    const auto minutes = std::trunc((bootClock_.secondsSince1970() - bootClock_.secondsUp()) / 60);
    constexpr double limit = 9223372036854775808.0;
    if (!std::isfinite(minutes) || minutes < -limit || minutes >= limit) {
        throw std::range_error("the system's clocks give no time of the boot");
    }
    return std::to_string(static_cast<std::int64_t>(minutes));
}

bool Preferences::shouldMinimizeLaunchAtLoginWindow() {
    if (!storedBool(PreferenceKey::launchAtLogin).value_or(false)) {
        return false;
    }
    const auto boot = currentBootIdentifier();
    if (storedString(PreferenceKey::lastMinimizedBootID) == boot) {
        return false;
    }
    defaults_.setValue(PreferenceKey::lastMinimizedBootID.name, boot);
    return true;
}

} // namespace tavro
