#include "UserInterface/MainWindowFitter.h"

#include "Platform/Headless/WindowAspectAdapter.h"
#include "UserInterface/WindowPanels.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <QWindow>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// An empty window on the screen of the tests, which is 800 by 800.
class MainWindowFitterTest : public testing::Test {
protected:
    MainWindowFitterTest() {
        window_.setGeometry(30, 20, 800, 503);
        window_.show();
    }

    void activate(QWindow& window) {
        window.requestActivate();
        QCoreApplication::processEvents();
        ASSERT_EQ(QGuiApplication::focusWindow(), &window);
    }

    QWindow window_;
    WindowPanels panels_;
    headless::WindowAspectAdapter aspect_;
};

TEST_F(MainWindowFitterTest, fitsAWindowThatAppears) {
    const MainWindowFitter fitter(window_, panels_, aspect_);
    activate(window_);
    EXPECT_EQ(window_.minimumSize(), QSize(720, 520));
    EXPECT_EQ(window_.maximumSize(), QSize(1600, 1006));
    EXPECT_THAT(aspect_.ratios, ElementsAre(QSize(1280, 805)));
}

TEST_F(MainWindowFitterTest, appearsOnce) {
    const MainWindowFitter fitter(window_, panels_, aspect_);
    QWindow other;
    other.show();
    activate(window_);
    activate(other);
    activate(window_);
    EXPECT_EQ(aspect_.ratios.size(), 1u);
}

TEST_F(MainWindowFitterTest, openingAPanelMovesTheLowerEdge) {
    const MainWindowFitter fitter(window_, panels_, aspect_);
    activate(window_);
    panels_.setAdvancedVisible(true);
    EXPECT_EQ(window_.geometry(), QRect(30, 20, 800, 568));
    EXPECT_EQ(window_.maximumSize(), QSize(1600, 1136));
    panels_.setSettingsVisible(true);
    EXPECT_EQ(window_.geometry(), QRect(30, 20, 800, 638));
    EXPECT_EQ(window_.maximumSize(), QSize(1600, 1276));
    panels_.setAdvancedVisible(false);
    EXPECT_EQ(window_.geometry(), QRect(30, 20, 800, 573));
    EXPECT_EQ(window_.maximumSize(), QSize(1600, 1146));
    EXPECT_THAT(aspect_.ratios,
                ElementsAre(QSize(1280, 805), QSize(1280, 909), QSize(1280, 1021), QSize(1280, 917)));
}

TEST_F(MainWindowFitterTest, theScreenHasTheLastWord) {
    window_.setGeometry(30, 20, 1280, 700);
    const MainWindowFitter fitter(window_, panels_, aspect_);
    activate(window_);
    EXPECT_EQ(window_.geometry(), QRect(30, 20, 1280, 760));
    EXPECT_THAT(aspect_.ratios, ElementsAre(QSize(1280, 805)));
    EXPECT_THAT(aspect_.sizes, ElementsAre(QSize(1280, 760)));
}

TEST_F(MainWindowFitterTest, withoutTheKeyboardNothingHappens) {
    QWindow other;
    other.show();
    activate(other);
    const MainWindowFitter fitter(window_, panels_, aspect_);
    const auto before = window_.geometry();
    panels_.setAdvancedVisible(true);
    EXPECT_EQ(window_.geometry(), before);
    EXPECT_THAT(aspect_.ratios, IsEmpty());
}

TEST_F(MainWindowFitterTest, aWindowThatFillsTheScreenKeepsItsSize) {
    const MainWindowFitter fitter(window_, panels_, aspect_);
    activate(window_);
    window_.setWindowState(Qt::WindowFullScreen);
    QCoreApplication::processEvents();
    const auto before = window_.size();
    panels_.setSettingsVisible(true);
    EXPECT_EQ(window_.size(), before);
    EXPECT_EQ(aspect_.ratios.back(), QSize(1280, 917));
}

TEST(WindowPanels, tellOfChangesOnly) {
    WindowPanels panels;
    const QSignalSpy advanced(&panels, &WindowPanels::isAdvancedVisibleChanged);
    const QSignalSpy settings(&panels, &WindowPanels::isSettingsVisibleChanged);
    const QSignalSpy height(&panels, &WindowPanels::preferredWindowHeightChanged);
    EXPECT_EQ(panels.preferredWindowHeight(), 805);
    panels.setAdvancedVisible(true);
    panels.setAdvancedVisible(true);
    EXPECT_EQ(panels.preferredWindowHeight(), 909);
    panels.setSettingsVisible(true);
    EXPECT_EQ(panels.preferredWindowHeight(), 1021);
    EXPECT_EQ(advanced.count(), 1);
    EXPECT_EQ(settings.count(), 1);
    EXPECT_EQ(height.count(), 2);
}

} // namespace
} // namespace tavro
