#include "ApplicationShell/AppDelegate.h"

#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = std::vector<std::string>;

/// Writes down what it is told, and what the measures were.
class RecordingWindow final : public ApplicationWindow {
public:
    explicit RecordingWindow(Log& log) : log_(log) {}

    bool canBeMade = true;
    WindowMeasures measures;

    bool create(const WindowMeasures& wanted) override {
        log_.emplace_back("create");
        measures = wanted;
        return canBeMade;
    }

    void show() override { log_.emplace_back("show"); }

    void minimize() override { log_.emplace_back("minimize"); }

    void activate() override { log_.emplace_back("activate"); }

private:
    Log& log_;
};

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() { bootClock_.answersIdentifier = "this boot"; }

    void setLaunchAtLogin(bool isOn) { ASSERT_TRUE(defaults_.setValue("TAVRO.LaunchAtLogin.v1", isOn)); }

    AppDelegate::Actions actions() {
        const auto note = [this](const char* what) { return [this, what] { log_.emplace_back(what); }; };
        return {.installMainMenu = note("menu"),
                .installIcon = note("icon"),
                .endGlobalPlay = note("end global play"),
                .silence = note("silence"),
                .silenceForGood = note("silence for good"),
                .startUpdates = note("updates")};
    }

    /// A launch of the program with what is stored now.
    Log launch() {
        AppDelegate delegate(window_, preferences_, actions());
        EXPECT_TRUE(delegate.applicationDidFinishLaunching());
        return takeLog();
    }

    Log takeLog() { return std::exchange(log_, {}); }

    Log log_;
    headless::UserDefaultsAdapter defaults_;
    headless::BootClockAdapter bootClock_;
    Preferences preferences_{defaults_, bootClock_};
    RecordingWindow window_{log_};
};

TEST_F(AppDelegateTest, startsInItsOrder) {
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "activate", "updates"));
}

TEST_F(AppDelegateTest, makesTheWindowAtItsSizeAndWithItsLimits) {
    launch();
    EXPECT_EQ(window_.measures.width, 1280);
    EXPECT_EQ(window_.measures.height, 805);
    EXPECT_EQ(window_.measures.minimumWidth, 720);
    EXPECT_EQ(window_.measures.minimumHeight, 520);
    EXPECT_EQ(window_.measures.maximumWidth(), 1600);
    EXPECT_EQ(window_.measures.maximumHeight(), 1006.25);
}

TEST_F(AppDelegateTest, staysOutOfTheWayAtTheFirstLaunchOfABootOnly) {
    setLaunchAtLogin(true);
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "minimize", "updates"));
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "activate", "updates"));
    bootClock_.answersIdentifier = "the next boot";
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "minimize", "updates"));
}

TEST_F(AppDelegateTest, comesToTheFrontWithLaunchAtLoginOff) {
    setLaunchAtLogin(false);
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "activate", "updates"));
}

TEST_F(AppDelegateTest, comesToTheFrontWhereBootsCannotBeToldApart) {
    setLaunchAtLogin(true);
    bootClock_.answersIdentifier = std::nullopt;
    bootClock_.answersSecondsSince1970 = 1e300;
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "activate", "updates"));
}

TEST_F(AppDelegateTest, endsTheStartWithoutAWindow) {
    window_.canBeMade = false;
    setLaunchAtLogin(true);
    AppDelegate delegate(window_, preferences_, actions());
    EXPECT_FALSE(delegate.applicationDidFinishLaunching());
    EXPECT_THAT(takeLog(), ElementsAre("menu", "icon", "create"));
    // Nobody has seen this launch, so it does not count as the boot's first.
    window_.canBeMade = true;
    EXPECT_THAT(launch(), ElementsAre("menu", "icon", "create", "show", "minimize", "updates"));
}

TEST_F(AppDelegateTest, startsWithoutUpdates) {
    auto withoutUpdates = actions();
    withoutUpdates.startUpdates = nullptr;
    AppDelegate delegate(window_, preferences_, withoutUpdates);
    EXPECT_TRUE(delegate.applicationDidFinishLaunching());
    EXPECT_THAT(takeLog(), ElementsAre("menu", "icon", "create", "show", "activate"));
}

TEST_F(AppDelegateTest, endsWithTheLastWindow) {
    EXPECT_TRUE(AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
}

TEST_F(AppDelegateTest, silencesOnceAtTheEndAndTheKeysBefore) {
    AppDelegate delegate(window_, preferences_, actions());
    delegate.applicationWillTerminate();
    EXPECT_THAT(takeLog(), ElementsAre("end global play", "silence for good"));
    delegate.applicationWillTerminate();
    delegate.sessionMayEnd();
    EXPECT_THAT(takeLog(), IsEmpty());
}

TEST_F(AppDelegateTest, theEndOfTheSessionIsOneSilenceInAll) {
    AppDelegate delegate(window_, preferences_, actions());
    delegate.sessionMayEnd();
    EXPECT_THAT(takeLog(), ElementsAre("silence"));
    delegate.sessionMayEnd();
    delegate.applicationWillTerminate();
    EXPECT_THAT(takeLog(), ElementsAre("end global play"));
}

TEST_F(AppDelegateTest, aSessionThatGoesOnIsPlayedAndSilencedAgain) {
    AppDelegate delegate(window_, preferences_, actions());
    delegate.sessionMayEnd();
    delegate.performanceWentOn();
    takeLog();
    delegate.sessionMayEnd();
    EXPECT_THAT(takeLog(), ElementsAre("silence"));
    delegate.performanceWentOn();
    delegate.applicationWillTerminate();
    EXPECT_THAT(takeLog(), ElementsAre("end global play", "silence for good"));
}

} // namespace
} // namespace tavro
