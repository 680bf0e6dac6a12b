#include "Platform/Linux/X11/FocusWatch.h"

#include <QByteArray>
#include <QCoreApplication>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace tavro::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FocusWatchTest : public testing::Test {
protected:
    /// Whether the filter keeps the event from Qt.
    bool send(std::uint8_t type, std::uint8_t mode, std::uint8_t detail = XCB_NOTIFY_DETAIL_NONLINEAR) {
        xcb_focus_in_event_t event{};
        event.response_type = type;
        event.mode = mode;
        event.detail = detail;
        return watch.nativeEventFilter(QByteArrayLiteral("xcb_generic_event_t"), &event, nullptr);
    }

    /// Qt delivers what it has been handed.
    static void deliver() { QCoreApplication::sendPostedEvents(); }

    std::vector<bool> told;
    FocusWatch watch{[this](bool hasFocus) { told.push_back(hasFocus); }};
};

TEST_F(FocusWatchTest, TellsWhenTheKeyboardComesAndGoes) {
    EXPECT_FALSE(send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_NORMAL));
    EXPECT_FALSE(send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL));
    deliver();
    EXPECT_FALSE(send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_WHILE_GRABBED));
    EXPECT_FALSE(send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_WHILE_GRABBED));
    deliver();
    EXPECT_THAT(told, ElementsAre(true, false, true, false));
}

TEST_F(FocusWatchTest, TellsALossBehindTheKeysThatCameBefore) {
    QObject receiver;
    std::vector<bool> toldBefore{true};
    QMetaObject::invokeMethod(&receiver, [&] { toldBefore = told; }, Qt::QueuedConnection);
    send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL);
    EXPECT_THAT(told, IsEmpty());
    deliver();
    EXPECT_THAT(toldBefore, IsEmpty());
    EXPECT_THAT(told, ElementsAre(false));
}

TEST_F(FocusWatchTest, TellsNoLossWhenTheKeyboardHasComeBackMeanwhile) {
    send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL);
    send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_NORMAL);
    deliver();
    EXPECT_THAT(told, ElementsAre(true));
    send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL);
    send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_NORMAL);
    send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL);
    deliver();
    EXPECT_THAT(told, ElementsAre(true, true, false));
}

TEST_F(FocusWatchTest, AGrabOnlyBorrowsItAndQtHearsNothingOfThat) {
    EXPECT_TRUE(send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_GRAB));
    EXPECT_TRUE(send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_UNGRAB));
    EXPECT_TRUE(send(XCB_FOCUS_IN, XCB_NOTIFY_MODE_GRAB));
    EXPECT_TRUE(send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_UNGRAB));
    deliver();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FocusWatchTest, ThePointerAndInnerWindowsMoveNothing) {
    for (const auto detail :
         {XCB_NOTIFY_DETAIL_POINTER, XCB_NOTIFY_DETAIL_POINTER_ROOT, XCB_NOTIFY_DETAIL_INFERIOR}) {
        EXPECT_FALSE(send(XCB_FOCUS_OUT, XCB_NOTIFY_MODE_NORMAL, static_cast<std::uint8_t>(detail)));
    }
    deliver();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(FocusWatchTest, OtherEventsAreNone) {
    EXPECT_FALSE(send(XCB_KEY_PRESS, XCB_NOTIFY_MODE_NORMAL));
    xcb_focus_in_event_t event{};
    event.response_type = XCB_FOCUS_IN;
    event.detail = XCB_NOTIFY_DETAIL_NONLINEAR;
    EXPECT_FALSE(watch.nativeEventFilter(QByteArrayLiteral("windows_generic_MSG"), &event, nullptr));
    EXPECT_THAT(told, IsEmpty());
}

} // namespace
} // namespace tavro::x11
