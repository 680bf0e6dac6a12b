#include "ApplicationShell/LoginItemController.h"

#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/LoginItemServiceAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"

#include <gmock/gmock.h>

namespace tavro {
namespace {

using Call = headless::LoginItemServiceAdapter::Call;
using Status = LoginItemService::Status;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class LoginItemControllerTest : public testing::Test {
protected:
    LoginItemControllerTest() { bootClock_.answersIdentifier = "this boot"; }

    headless::LoginItemServiceAdapter service_;
    headless::UserDefaultsAdapter defaults_;
    headless::BootClockAdapter bootClock_;
    Preferences preferences_{defaults_, bootClock_};
    LoginItemController controller_{service_, defaults_, preferences_};

    void expectStored(const std::optional<bool>& launchAtLogin, const std::optional<std::string>& boot) {
        EXPECT_EQ(defaults_.boolean("TAVRO.LaunchAtLogin.v1"), launchAtLogin);
        EXPECT_EQ(defaults_.string("TAVRO.LastMinimizedBootID.v1"), boot);
    }
};

TEST_F(LoginItemControllerTest, registersAndRemembers) {
    EXPECT_TRUE(controller_.setEnabled(true));
    EXPECT_THAT(service_.calls, ElementsAre(Call::registerItem));
    EXPECT_TRUE(controller_.isEnabled());
    expectStored(true, "this boot");
}

TEST_F(LoginItemControllerTest, unregistersAndRemembersWithoutTheBoot) {
    service_.reportedStatus = Status::enabled;
    EXPECT_TRUE(controller_.setEnabled(false));
    EXPECT_THAT(service_.calls, ElementsAre(Call::unregisterItem));
    EXPECT_FALSE(controller_.isEnabled());
    expectStored(false, std::nullopt);
}

TEST_F(LoginItemControllerTest, asksForNothingThatIsAlreadySo) {
    service_.failure = "must not be asked";
    service_.reportedStatus = Status::enabled;
    EXPECT_TRUE(controller_.setEnabled(true));
    expectStored(true, "this boot");
    service_.reportedStatus = Status::notRegistered;
    EXPECT_TRUE(controller_.setEnabled(false));
    expectStored(false, "this boot");
    EXPECT_THAT(service_.calls, IsEmpty());
}

TEST_F(LoginItemControllerTest, registersFromEveryOtherStatus) {
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        service_.reportedStatus = status;
        service_.calls.clear();
        EXPECT_TRUE(controller_.setEnabled(true));
        EXPECT_THAT(service_.calls, ElementsAre(Call::registerItem));
    }
}

TEST_F(LoginItemControllerTest, unregistersFromEveryOtherStatus) {
    for (const auto status : {Status::enabled, Status::requiresApproval, Status::notFound}) {
        service_.reportedStatus = status;
        service_.calls.clear();
        EXPECT_TRUE(controller_.setEnabled(false));
        EXPECT_THAT(service_.calls, ElementsAre(Call::unregisterItem));
    }
}

TEST_F(LoginItemControllerTest, remembersWhatTheSystemReportsWhenRegisteringFails) {
    service_.failure = "no";
    for (const auto status : {Status::notRegistered, Status::requiresApproval, Status::notFound}) {
        service_.reportedStatus = status;
        defaults_.setValue("TAVRO.LaunchAtLogin.v1", true);
        EXPECT_FALSE(controller_.setEnabled(true));
        EXPECT_FALSE(controller_.isEnabled());
        expectStored(false, std::nullopt);
    }
}

TEST_F(LoginItemControllerTest, remembersWhatTheSystemReportsWhenUnregisteringFails) {
    service_.failure = "no";
    for (const auto status : {Status::enabled, Status::requiresApproval, Status::notFound}) {
        service_.reportedStatus = status;
        EXPECT_FALSE(controller_.setEnabled(false));
        expectStored(status == Status::enabled, std::nullopt);
    }
}

TEST_F(LoginItemControllerTest, storesTheWishBeforeTheBoot) {
    EXPECT_TRUE(controller_.setEnabled(true));
    EXPECT_THAT(defaults_.writes, ElementsAre(Pair("TAVRO.LaunchAtLogin.v1", UserDefaults::Value(true)),
                                              Pair("TAVRO.LastMinimizedBootID.v1",
                                                   UserDefaults::Value(std::string("this boot")))));
}

TEST_F(LoginItemControllerTest, succeedsWhenOnlyRememberingFails) {
    defaults_.refusesWrites = true;
    EXPECT_TRUE(controller_.setEnabled(true));
    EXPECT_TRUE(controller_.isEnabled());
}

TEST_F(LoginItemControllerTest, letsTheNextBootStartMinimizedAndNotThisOne) {
    EXPECT_TRUE(controller_.setEnabled(true));
    EXPECT_FALSE(preferences_.shouldMinimizeLaunchAtLoginWindow());
    bootClock_.answersIdentifier = "next boot";
    EXPECT_TRUE(preferences_.shouldMinimizeLaunchAtLoginWindow());
}

} // namespace
} // namespace tavro
