#include "UserInterface/TutorialPresenter.h"

#include "UserInterface/Instrument.h"
#include "UserInterface/TutorialSteps.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace tavro {
namespace {

using namespace std::chrono_literals;

const std::string key = "TAVRO.TutorialCompleted.v1";

class TutorialPresenterTest : public testing::Test {
protected:
    std::optional<UserDefaults::Value> stored() const { return instrument_.defaults.value(key); }

    void expectCompleted() const { EXPECT_EQ(stored(), std::optional<UserDefaults::Value>(true)); }

    /// Whether the tour comes to a user with this stored.
    bool comesAfter(const UserDefaults::Value& value) {
        instrument_.defaults.setValue(key, value);
        TutorialPresenter other(instrument_.globalPlay, instrument_.defaults, instrument_.actor,
                                KeyboardAccess::displayOrInputDevices);
        other.mainWindowWasShown();
        instrument_.actor.runToEnd();
        return other.isTutorialVisible();
    }

    void stepForward(int count) {
        for (int step = 0; step < count; ++step) {
            tutorial_.next();
        }
    }

    Instrument instrument_;
    TutorialPresenter tutorial_{instrument_.globalPlay, instrument_.defaults, instrument_.actor,
                                KeyboardAccess::displayOrInputDevices};
};

TEST_F(TutorialPresenterTest, ComesAMomentAfterTheFirstWindowOfANewUser) {
    tutorial_.mainWindowWasShown();
    EXPECT_FALSE(tutorial_.isTutorialVisible());
    instrument_.actor.runUntil(350ms - 1ns);
    EXPECT_FALSE(tutorial_.isTutorialVisible());
    instrument_.actor.runUntil(350ms);
    EXPECT_TRUE(tutorial_.isTutorialVisible());
    EXPECT_EQ(tutorial_.stepIndex(), 0);
    EXPECT_EQ(stored(), std::nullopt);
    EXPECT_FALSE(instrument_.actor.hasWork());
}

TEST_F(TutorialPresenterTest, StaysAwayFromWhoeverHasEndedIt) {
    for (const UserDefaults::Value& value :
         {UserDefaults::Value(true), UserDefaults::Value("YES"), UserDefaults::Value("1")}) {
        EXPECT_FALSE(comesAfter(value));
        EXPECT_EQ(stored(), std::optional(value));
    }
}

TEST_F(TutorialPresenterTest, WhatReadsAsFalseCountsAsNotEnded) {
    for (const UserDefaults::Value& value :
         {UserDefaults::Value(false), UserDefaults::Value("NO"), UserDefaults::Value(""),
          UserDefaults::Value(UserDefaults::Data{"true"})}) {
        EXPECT_TRUE(comesAfter(value));
    }
}

TEST_F(TutorialPresenterTest, IsNotShownTwiceToWhoeverAskedForItInTheMeantime) {
    tutorial_.mainWindowWasShown();
    instrument_.actor.runUntil(100ms);
    tutorial_.show();
    tutorial_.next();
    instrument_.actor.runUntil(1s);
    EXPECT_EQ(tutorial_.stepIndex(), 1);
}

TEST_F(TutorialPresenterTest, DoesNotComeAgainWithTheWindow) {
    tutorial_.mainWindowWasShown();
    instrument_.actor.runToEnd();
    tutorial_.dismiss();
    // Not even when the end could not be stored.
    instrument_.defaults.setValue(key, false);
    tutorial_.mainWindowWasShown();
    instrument_.actor.runToEnd();
    EXPECT_FALSE(tutorial_.isTutorialVisible());
}

TEST_F(TutorialPresenterTest, AnEarlyEndIsNotFollowedByTheFirstShowing) {
    tutorial_.mainWindowWasShown();
    tutorial_.show();
    tutorial_.dismiss();
    instrument_.actor.runToEnd();
    EXPECT_FALSE(tutorial_.isTutorialVisible());
}

TEST_F(TutorialPresenterTest, TheProgressCountsFromOneToSix) {
    tutorial_.show();
    for (int step = 1; step <= 6; ++step) {
        EXPECT_EQ(tutorial_.progressText().toStdString(), "Quick Tour · " + std::to_string(step) + " / 6");
        EXPECT_EQ(tutorial_.step(), tutorial_.steps().at(step - 1));
        EXPECT_EQ(tutorial_.isFirstStep(), step == 1);
        EXPECT_EQ(tutorial_.isLastStep(), step == 6);
        tutorial_.next();
    }
    EXPECT_EQ(tutorial_.stepIndex(), 5);
    EXPECT_TRUE(tutorial_.isTutorialVisible());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialPresenterTest, BackGoesToTheFirstStepAndNoFurther) {
    tutorial_.show();
    stepForward(2);
    tutorial_.back();
    EXPECT_EQ(tutorial_.stepIndex(), 1);
    tutorial_.back();
    tutorial_.back();
    EXPECT_EQ(tutorial_.stepIndex(), 0);
    EXPECT_TRUE(tutorial_.isTutorialVisible());
}

TEST_F(TutorialPresenterTest, TheDefaultButtonGoesOnAndEndsTheTourOnTheLastStep) {
    tutorial_.show();
    for (int step = 0; step < 5; ++step) {
        EXPECT_EQ(tutorial_.stepIndex(), step);
        tutorial_.proceed();
    }
    EXPECT_EQ(stored(), std::nullopt);
    tutorial_.proceed();
    EXPECT_FALSE(tutorial_.isTutorialVisible());
    expectCompleted();
}

TEST_F(TutorialPresenterTest, EveryWayOutStoresThatItWasEnded) {
    const std::function<void()> ways[]{[&] { tutorial_.skip(); }, [&] { tutorial_.done(); },
                                       [&] { tutorial_.dismiss(); }};
    for (const auto& leave : ways) {
        for (int step = 0; step < 6; ++step) {
            instrument_.defaults.setValue(key, false);
            tutorial_.show();
            stepForward(step);
            leave();
            EXPECT_FALSE(tutorial_.isTutorialVisible());
            expectCompleted();
        }
    }
}

TEST_F(TutorialPresenterTest, WithoutADismissalNothingIsStored) {
    {
        TutorialPresenter other(instrument_.globalPlay, instrument_.defaults, instrument_.actor,
                                KeyboardAccess::displayOrInputDevices);
        other.mainWindowWasShown();
        instrument_.actor.runUntil(350ms);
        EXPECT_TRUE(other.isTutorialVisible());
        other.next();
    }
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialPresenterTest, EndsQuietlyBeforeItsFirstShowing) {
    {
        TutorialPresenter other(instrument_.globalPlay, instrument_.defaults, instrument_.actor,
                                KeyboardAccess::displayOrInputDevices);
        other.mainWindowWasShown();
    }
    EXPECT_FALSE(instrument_.actor.hasWork());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialPresenterTest, HiddenItDoesNothing) {
    tutorial_.next();
    tutorial_.back();
    tutorial_.proceed();
    tutorial_.dismiss();
    EXPECT_EQ(tutorial_.stepIndex(), 0);
    EXPECT_FALSE(tutorial_.isTutorialVisible());
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(TutorialPresenterTest, ReopenedItBeginsAgainWithTheHotkeyOfThatMoment) {
    tutorial_.show();
    EXPECT_EQ(tutorial_.steps(), TutorialSteps::make(instrument_.globalPlay.displayedGlobalPlayHotkey(),
                                                     KeyboardAccess::displayOrInputDevices));
    const auto before = tutorial_.steps().at(2).body;
    stepForward(4);
    tutorial_.done();

    instrument_.globalPlay.setGlobalPlayHotkey({U'k', std::nullopt, HotkeyModifiers::control});
    tutorial_.show();
    EXPECT_EQ(tutorial_.stepIndex(), 0);
    EXPECT_EQ(tutorial_.steps(),
              TutorialSteps::make(QStringLiteral("Ctrl+k"), KeyboardAccess::displayOrInputDevices));
    EXPECT_NE(tutorial_.steps().at(2).body, before);
    expectCompleted();
}

TEST_F(TutorialPresenterTest, ShownAgainWhileItIsShownItStaysWhereItIs) {
    tutorial_.show();
    stepForward(3);
    tutorial_.show();
    EXPECT_EQ(tutorial_.stepIndex(), 3);
}

} // namespace
} // namespace tavro
