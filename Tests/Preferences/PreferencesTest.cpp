#include "Preferences/PreferencesFixture.h"

namespace tavro {

using Data = UserDefaults::Data;

TEST_P(PreferencesTest, namesEverySettingOnce) {
    const auto expectNames = [](const PreferenceKey& key, const std::string& setting) {
        EXPECT_EQ(key.name, "TAVRO." + setting);
        EXPECT_EQ(key.legacyNames, (std::vector<std::string>{"Pelmont." + setting, "Sarvik." + setting}));
    };
    expectNames(PreferenceKey::globalPlayHotkey, "GlobalPlayHotkey.v1");
    expectNames(PreferenceKey::selectedPresetID, "SelectedPresetID.v1");
    expectNames(PreferenceKey::launchAtLogin, "LaunchAtLogin.v1");
    expectNames(PreferenceKey::lastMinimizedBootID, "LastMinimizedBootID.v1");
    expectNames(PreferenceKey::customPresets, "CustomPresets.v1");
    EXPECT_EQ(PreferenceKey::tutorialCompleted.name, "TAVRO.TutorialCompleted.v1");
    EXPECT_TRUE(PreferenceKey::tutorialCompleted.legacyNames.empty());
}

TEST_P(PreferencesTest, findsNothingInAnEmptyDatabase) {
    EXPECT_EQ(preferences_.storedData(PreferenceKey::customPresets), std::nullopt);
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), std::nullopt);
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), std::nullopt);
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::tutorialCompleted), std::nullopt);
    EXPECT_EQ(preferences_.loadGlobalPlayHotkey(), ToggleHotkey{});
}

TEST_P(PreferencesTest, findsTheLastOfAllPlacesAndCopiesItToTheFirst) {
    settings_->putInSuite("com.vessiron.sarvik.experimental", "Sarvik.Other.v1", "something else");
    settings_->putInSuite("com.vessiron.sarvik", "Sarvik.SelectedPresetID.v1", "old one");
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "old one");
    EXPECT_EQ(defaults_.string("TAVRO.SelectedPresetID.v1"), "old one");
    EXPECT_EQ(defaults_.suite("com.vessiron.sarvik")->string("Sarvik.SelectedPresetID.v1"), "old one");
}

TEST_P(PreferencesTest, looksThroughThePlacesInOrder) {
    // From the last place to the first: each value hides those stored before it.
    const auto expectFound = [&](const std::string& expected) {
        EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), expected);
    };
    const auto expectFoundInSuite = [&](const std::string& suite, const std::string& key) {
        auto fresh = GetParam().make();
        for (const auto* const laterSuite : {"com.vessiron.sarvik", "com.vessiron.sarvik.experimental"}) {
            for (const auto* const laterKey : {"Sarvik.SelectedPresetID.v1", "Pelmont.SelectedPresetID.v1"}) {
                fresh->putInSuite(laterSuite, laterKey, std::string(laterSuite) + laterKey);
                if (laterSuite == suite && laterKey == key) {
                    Preferences preferences(fresh->standard(), bootClock_);
                    EXPECT_EQ(preferences.storedString(PreferenceKey::selectedPresetID), suite + key);
                    return;
                }
            }
        }
        FAIL() << suite << " is no legacy suite";
    };
    expectFoundInSuite("com.vessiron.sarvik", "Sarvik.SelectedPresetID.v1");
    expectFoundInSuite("com.vessiron.sarvik", "Pelmont.SelectedPresetID.v1");
    expectFoundInSuite("com.vessiron.sarvik.experimental", "Sarvik.SelectedPresetID.v1");
    expectFoundInSuite("com.vessiron.sarvik.experimental", "Pelmont.SelectedPresetID.v1");

    settings_->putInSuite("com.vessiron.sarvik.experimental", "Pelmont.SelectedPresetID.v1", "in the suite");
    defaults_.setValue("Sarvik.SelectedPresetID.v1", "Sarvik's");
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "Pelmont's");
    expectFound("Pelmont's");
    defaults_.setValue("TAVRO.SelectedPresetID.v1", "ours");
    expectFound("ours");
}

TEST_P(PreferencesTest, prefersTheNewerOfTwoGenerationsInTheStandardDatabase) {
    defaults_.setValue("Sarvik.SelectedPresetID.v1", "Sarvik's");
    settings_->putInSuite("com.vessiron.sarvik.experimental", "Pelmont.SelectedPresetID.v1", "in the suite");
    auto other = GetParam().make();
    other->standard().setValue("Sarvik.LaunchAtLogin.v1", false);
    other->standard().setValue("Pelmont.LaunchAtLogin.v1", true);
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "Sarvik's");
    EXPECT_EQ(Preferences(other->standard(), bootClock_).storedBool(PreferenceKey::launchAtLogin), true);
}

TEST_P(PreferencesTest, neverLooksForTheCurrentNameInASuite) {
    settings_->putInSuite("com.vessiron.sarvik", "TAVRO.SelectedPresetID.v1", "not to be found");
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), std::nullopt);
}

TEST_P(PreferencesTest, copiesAValueOnceAndForAll) {
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "first");
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "first");
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "second");
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "first");
    EXPECT_EQ(defaults_.string("Pelmont.SelectedPresetID.v1"), "second");
}

TEST_P(PreferencesTest, copiesEveryTypeAsItIs) {
    defaults_.setValue("Pelmont.CustomPresets.v1", Data{"[]"});
    defaults_.setValue("Sarvik.LaunchAtLogin.v1", false);
    EXPECT_EQ(preferences_.storedData(PreferenceKey::customPresets), Data{"[]"});
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), false);
    EXPECT_EQ(defaults_.value("TAVRO.CustomPresets.v1"), UserDefaults::Value(Data{"[]"}));
    EXPECT_EQ(defaults_.value("TAVRO.LaunchAtLogin.v1"), UserDefaults::Value(false));
}

TEST_P(PreferencesTest, returnsALegacyValueThatCannotBeCopied) {
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "readable");
    settings_->refuseWrites();
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "readable");
    EXPECT_EQ(defaults_.string("TAVRO.SelectedPresetID.v1"), std::nullopt);
}

TEST_P(PreferencesTest, takesAStoredNoForAnAnswer) {
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", false);
    defaults_.setValue("Pelmont.LaunchAtLogin.v1", true);
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), false);
}

TEST_P(PreferencesTest, takesAnyTypeForABoolean) {
    defaults_.setValue("Pelmont.LaunchAtLogin.v1", true);
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", Data{"true"});
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), false);
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", "yes");
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), true);
    defaults_.setValue("TAVRO.LaunchAtLogin.v1", "");
    EXPECT_EQ(preferences_.storedBool(PreferenceKey::launchAtLogin), false);
}

TEST_P(PreferencesTest, looksOnWhenTheCurrentValueHasAnotherType) {
    defaults_.setValue("TAVRO.SelectedPresetID.v1", Data{"bytes"});
    defaults_.setValue("Pelmont.SelectedPresetID.v1", "text");
    EXPECT_EQ(preferences_.storedString(PreferenceKey::selectedPresetID), "text");
    defaults_.setValue("TAVRO.CustomPresets.v1", "text");
    EXPECT_EQ(preferences_.storedData(PreferenceKey::customPresets), std::nullopt);
    EXPECT_EQ(defaults_.string("TAVRO.CustomPresets.v1"), "text");
}

TEST_P(PreferencesTest, readsABooleanFromTheBeginningOfAText) {
    for (const auto* const text : {"yes", "Y", "true", "T", "1", "9 lives"}) {
        defaults_.setValue("switch", text);
        EXPECT_EQ(defaults_.boolean("switch"), true) << text;
    }
    for (const auto* const text : {"no", "false", "0", "", "on", "ÿ"}) {
        defaults_.setValue("switch", text);
        EXPECT_EQ(defaults_.boolean("switch"), false) << text;
    }
    EXPECT_EQ(defaults_.boolean("another switch"), std::nullopt);
}

} // namespace tavro
