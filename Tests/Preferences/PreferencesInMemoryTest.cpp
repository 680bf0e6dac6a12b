#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Preferences/PreferencesFixture.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace tavro {
namespace {

class SettingsInMemory final : public StoredSettings {
public:
    [[nodiscard]] UserDefaults& standard() override { return defaults_; }

    void putInSuite(const std::string& suite, const std::string& key,
                    const UserDefaults::Value& value) override {
        if (!defaults_.suite(suite)) {
            defaults_.addSuite(suite, {});
        }
        ASSERT_TRUE(defaults_.suite(suite)->setValue(key, value));
    }

    void refuseWrites() override { defaults_.refusesWrites = true; }

private:
    headless::UserDefaultsAdapter defaults_;
};

INSTANTIATE_TEST_SUITE_P(InMemory, PreferencesTest,
                         testing::Values(StoredSettingsKind{"memory", std::make_unique<SettingsInMemory>}));

TEST(PreferencesInMemory, areLookedUpInAFixedOrderAndNoFurtherThanNeeded) {
    headless::UserDefaultsAdapter defaults;
    defaults.addSuite("com.vessiron.sarvik", {{"Sarvik.LaunchAtLogin.v1", true}});
    defaults.addSuite("com.vessiron.sarvik.experimental", {});
    const headless::BootClockAdapter bootClock;
    Preferences preferences(defaults, bootClock);
    EXPECT_EQ(preferences.storedBool(PreferenceKey::launchAtLogin), true);
    EXPECT_THAT(defaults.reads(),
                testing::ElementsAre("TAVRO.LaunchAtLogin.v1", "Pelmont.LaunchAtLogin.v1",
                                     "Sarvik.LaunchAtLogin.v1",
                                     "com.vessiron.sarvik.experimental/Pelmont.LaunchAtLogin.v1",
                                     "com.vessiron.sarvik.experimental/Sarvik.LaunchAtLogin.v1",
                                     "com.vessiron.sarvik/Pelmont.LaunchAtLogin.v1",
                                     "com.vessiron.sarvik/Sarvik.LaunchAtLogin.v1"));
    EXPECT_THAT(defaults.writes,
                testing::ElementsAre(testing::Pair("TAVRO.LaunchAtLogin.v1", UserDefaults::Value(true))));
    const auto readsBefore = defaults.reads().size();
    EXPECT_EQ(preferences.storedBool(PreferenceKey::launchAtLogin), true);
    EXPECT_EQ(defaults.reads().size(), readsBefore + 1);
    EXPECT_EQ(defaults.writes.size(), 1U);
}

TEST(PreferencesInMemory, minimizeOnlyWhenLaunchAtLoginIsOnAndThenAskTheClock) {
    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    bootClock.answersIdentifier.reset();
    bootClock.answersSecondsUp = 1e300;
    Preferences preferences(defaults, bootClock);
    // Without launch at login the boot does not matter: its times, which are none, are not asked for.
    EXPECT_FALSE(preferences.shouldMinimizeLaunchAtLoginWindow());
    defaults.setValue("TAVRO.LaunchAtLogin.v1", true);
    EXPECT_THROW((void)preferences.shouldMinimizeLaunchAtLoginWindow(), std::range_error);
}

} // namespace
} // namespace tavro
