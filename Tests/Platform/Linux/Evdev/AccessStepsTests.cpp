#include "Platform/Linux/Evdev/AccessSteps.h"

#include <gtest/gtest.h>

namespace tavro::evdev {
namespace {

constexpr auto complete = AccessSteps{
    .hasGroup = true, .isMember = true, .hasJoined = true, .isRuleInstalled = true, .isRuleApplied = true};

void expectSteps(const AccessSteps& steps, const std::string& missing) {
    EXPECT_EQ(steps.advice(),
              "Global Play needs access to the input devices. " + missing + "Never run TAVRO as root.");
}

TEST(AccessSteps, TellsTheWholeWayAtItsBeginning) {
    expectSteps({}, "Make the group: \"sudo groupadd --system tavro-input\". "
                    "Install the udev rule 60-tavro-input.rules. "
                    "Apply the rule: \"sudo udevadm control --reload && sudo udevadm trigger\". "
                    "Join the group: \"sudo usermod -aG tavro-input $USER\". "
                    "Log in again: groups are given at the login. ");
}

TEST(AccessSteps, TellsTheLoginThatIsMissing) {
    auto steps = complete;
    steps.hasJoined = false;
    expectSteps(steps, "Log in again: groups are given at the login. ");
}

TEST(AccessSteps, TellsTheMembershipThatIsMissing) {
    auto steps = complete;
    steps.isMember = false;
    steps.hasJoined = false;
    expectSteps(steps, "Join the group: \"sudo usermod -aG tavro-input $USER\". "
                       "Log in again: groups are given at the login. ");
}

TEST(AccessSteps, TellsTheRuleThatIsMissing) {
    auto steps = complete;
    steps.isRuleInstalled = false;
    steps.isRuleApplied = false;
    expectSteps(steps, "Install the udev rule 60-tavro-input.rules. "
                       "Apply the rule: \"sudo udevadm control --reload && sudo udevadm trigger\". ");
}

TEST(AccessSteps, TellsTheRuleThatWasNotApplied) {
    auto steps = complete;
    steps.isRuleApplied = false;
    expectSteps(steps, "Apply the rule: \"sudo udevadm control --reload && sudo udevadm trigger\". ");
}

TEST(AccessSteps, AsksForNothingThatAnotherRuleHasDone) {
    auto steps = complete;
    steps.isRuleInstalled = false;
    expectSteps(steps, "");
}

} // namespace
} // namespace tavro::evdev
