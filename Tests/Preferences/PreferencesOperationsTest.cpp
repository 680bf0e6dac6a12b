#include "PerformanceModel/TAVROPreset.h"
#include "Preferences/PreferencesFixture.h"

#include <limits>
#include <stdexcept>

namespace tavro {

TEST_P(PreferencesTest, normalisesTheKeyOfAStoredHotkey) {
    const auto expectKey = [&](const std::string& stored, Character expected) {
        putHotkeyWithKey(stored);
        EXPECT_EQ(preferences_.loadGlobalPlayHotkey().character, expected) << stored;
    };
    expectKey(R"(  Ä\n)", U'ä');
    expectKey("ab", U'b');
    expectKey("", U'^');
    expectKey("  ", U'^');
    expectKey(R"(\t\r\n)", U'^');
    expectKey(R"(\u00A0\u2028Q\u3000)", U'q');
    expectKey("Z", U'z');
}

TEST_P(PreferencesTest, savesAHotkeyAsJsonWithoutWhiteSpace) {
    preferences_.saveGlobalPlayHotkey({});
    EXPECT_EQ(defaults_.data("TAVRO.GlobalPlayHotkey.v1"), Data{R"({"key":"^","modifiersRawValue":0})"});
    preferences_.saveGlobalPlayHotkey(
        {.character = U'p', .keyCode = 35, .modifiers = HotkeyModifiers::command | HotkeyModifiers::shift});
    EXPECT_EQ(defaults_.data("TAVRO.GlobalPlayHotkey.v1"),
              Data{R"({"key":"p","keyCode":35,"modifiersRawValue":9})"});
}

TEST_P(PreferencesTest, loadsTheHotkeyThatWasSaved) {
    const ToggleHotkey hotkey{.character = U'"', .keyCode = -1, .modifiers = HotkeyModifiers(0x7F00)};
    preferences_.saveGlobalPlayHotkey(hotkey);
    EXPECT_EQ(preferences_.loadGlobalPlayHotkey(), hotkey);
}

TEST_P(PreferencesTest, loadsTheHotkeyOfAnEarlierGeneration) {
    defaults_.setValue("Sarvik.GlobalPlayHotkey.v1",
                       Data{R"({"key":"K","keyCode":40,"modifiersRawValue":6})"});
    const ToggleHotkey expected{
        .character = U'k', .keyCode = 40, .modifiers = HotkeyModifiers::control | HotkeyModifiers::option};
    EXPECT_EQ(preferences_.loadGlobalPlayHotkey(), expected);
}

TEST_P(PreferencesTest, fallsBackToTheDefaultHotkeyAndLeavesBadDataAlone) {
    for (const auto* const bad :
         {"", "not JSON", "{", "[]", "\"^\"", "{}", R"({"key":"a"})", R"({"modifiersRawValue":0})",
          R"({"key":1,"modifiersRawValue":0})", R"({"key":"a","modifiersRawValue":"0"})",
          R"({"key":"a","modifiersRawValue":0.5})", R"({"key":"a","keyCode":"1","modifiersRawValue":0})",
          R"({"key":"a","modifiersRawValue":1e300})", "{\"key\":\"\xFF\"}"}) {
        putHotkey(bad);
        EXPECT_EQ(preferences_.loadGlobalPlayHotkey(), ToggleHotkey{}) << bad;
        EXPECT_EQ(defaults_.data("TAVRO.GlobalPlayHotkey.v1"), Data{bad});
    }
}

TEST_P(PreferencesTest, readsWhatOtherWritersOfTheHotkeyLeave) {
    putHotkey(R"( { "modifiersRawValue": 2.0, "keyCode": null, "key": "h", "more": [] } )");
    const ToggleHotkey expected{
        .character = U'h', .keyCode = std::nullopt, .modifiers = HotkeyModifiers::control};
    EXPECT_EQ(preferences_.loadGlobalPlayHotkey(), expected);
}

TEST_P(PreferencesTest, selectsTheStoredPresetWhenItIsThere) {
    const std::vector<TAVROPreset> presets{{.id = "default", .name = "", .state = {}, .isBuiltIn = true},
                                           {.id = "mine", .name = "", .state = {}}};
    EXPECT_EQ(preferences_.loadSelectedPresetID(presets), "default");
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "mine");
    EXPECT_EQ(preferences_.loadSelectedPresetID(presets), "mine");
}

TEST_P(PreferencesTest, selectsTheDefaultInPlaceOfADeletedPreset) {
    const std::vector<TAVROPreset> presets{{.id = "mine", .name = "", .state = {}}};
    for (const auto* const identifier : {"deleted", "Mine", "mine ", ""}) {
        defaults_.setValue("TAVRO.SelectedPresetID.v1", identifier);
        EXPECT_EQ(preferences_.loadSelectedPresetID(presets), "default");
        EXPECT_EQ(defaults_.string("TAVRO.SelectedPresetID.v1"), identifier);
    }
}

TEST_P(PreferencesTest, minimizesTheFirstLaunchOfEveryBoot) {
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", true);
    bootClock_.answersIdentifier = "one";
    EXPECT_TRUE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    EXPECT_EQ(defaults_.string("TAVRO.LastMinimizedBootID.v1"), "one");
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    bootClock_.answersIdentifier = "two";
    EXPECT_TRUE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
}

TEST_P(PreferencesTest, minimizesNothingWithoutLaunchAtLogin) {
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", false);
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    EXPECT_EQ(defaults_.value("TAVRO.LastMinimizedBootID.v1"), std::nullopt);
}

TEST_P(PreferencesTest, minimizesByTheBookkeepingOfAnEarlierGeneration) {
    bootClock_.answersIdentifier = "one";
    defaults_.setValue("Pelmont.LaunchAtLogin.v1", true);
    defaults_.setValue("Sarvik.LastMinimizedBootID.v1", "one");
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
}

TEST_P(PreferencesTest, takesTheSystemsWordForTheBoot) {
    bootClock_.answersIdentifier = "1700000000";
    bootClock_.answersSecondsSince1970 = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(preferences_.currentBootIdentifier(), "1700000000");
}

TEST_P(PreferencesTest, computesTheMinuteOfTheBootWithoutTheSystemsWord) {
    bootClock_.answersIdentifier.reset();
    bootClock_.answersSecondsSince1970 = 1'700'000'059.9;
    bootClock_.answersSecondsUp = 0.5;
    EXPECT_EQ(preferences_.currentBootIdentifier(), "28333334");
    bootClock_.answersSecondsSince1970 = 10;
    bootClock_.answersSecondsUp = 129;
    EXPECT_EQ(preferences_.currentBootIdentifier(), "-1");
}

TEST_P(PreferencesTest, refusesTimesThatAreNone) {
    bootClock_.answersIdentifier.reset();
    for (const auto time : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
                            60 * 9223372036854775808.0, -1e30}) {
        bootClock_.answersSecondsSince1970 = time;
        EXPECT_THROW((void)preferences_.currentBootIdentifier(), std::range_error) << time;
    }
}

} // namespace tavro
