#pragma once

#include "Platform/Headless/BootClockAdapter.h"
#include "Preferences/AppPreferences.h"
#include "Preferences/StoredSettings.h"

#include <gtest/gtest.h>

namespace tavro {

/// Preferences over a database of each kind; the program that runs the tests names the kinds.
class PreferencesTest : public testing::TestWithParam<StoredSettingsKind> {
protected:
    using Data = UserDefaults::Data;

    std::unique_ptr<StoredSettings> settings_ = GetParam().make();
    UserDefaults& defaults_ = settings_->standard();
    headless::BootClockAdapter bootClock_;
    Preferences preferences_{defaults_, bootClock_};

    void putHotkey(const std::string& json) {
        ASSERT_TRUE(defaults_.setValue("TAVRO.GlobalPlayHotkey.v1", Data{json}));
    }

    void putHotkeyWithKey(const std::string& jsonText) {
        putHotkey(R"({"key":")" + jsonText + R"(","modifiersRawValue":0})");
    }
};

} // namespace tavro
