#include "PerformanceModel/Character.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Preferences/AppPreferences.h"
#include "Require.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tavro;
    headless::UserDefaultsAdapter defaults;
    const headless::BootClockAdapter bootClock;
    Preferences preferences(defaults, bootClock);
    defaults.setValue(PreferenceKey::globalPlayHotkey.name,
                      UserDefaults::Data{{reinterpret_cast<const char*>(data), size}});
    const auto hotkey = preferences.loadGlobalPlayHotkey();
    const auto characters = charactersOf(toUtf8(hotkey.character));
    require(characters && characters->size() == 1, "the key is one character");
    preferences.saveGlobalPlayHotkey(hotkey);
    require(preferences.loadGlobalPlayHotkey() == hotkey,
            "what was loaded is loaded again after it was saved");
    return 0;
}
