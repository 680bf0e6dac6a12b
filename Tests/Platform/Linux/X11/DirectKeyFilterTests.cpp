#include "Platform/Linux/X11/DirectKeyFilter.h"

#include <QGuiApplication>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace tavro::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;

KeyEvent down(std::int64_t keyCode) {
    return {.type = KeyEvent::Type::keyDown,
            .keyCode = keyCode,
            .characterIgnoringModifiers = {},
            .modifiers = {},
            .isAutorepeat = false};
}

KeyEvent up(std::int64_t keyCode) {
    auto event = down(keyCode);
    event.type = KeyEvent::Type::keyUp;
    return event;
}

/// A window that has the keyboard, and a handler that takes everything unless it is told not to.
class DirectKeyFilterTest : public testing::Test {
protected:
    DirectKeyFilterTest() {
        window_.show();
        window_.requestActivate();
        QCoreApplication::processEvents();
    }

    void SetUp() override { ASSERT_EQ(QGuiApplication::focusWindow(), &window_); }

    xcb_key_press_event_t key(std::uint8_t type, std::uint32_t evdevCode, unsigned state = 0) const {
        xcb_key_press_event_t event{};
        event.response_type = type;
        event.detail = static_cast<xcb_keycode_t>(evdevCode + 8);
        event.event = static_cast<xcb_window_t>(window_.winId());
        event.state = static_cast<std::uint16_t>(state);
        return event;
    }

    /// Whether the filter keeps the event from Qt.
    template <typename Event>
    bool send(Event event, const char* eventType = "xcb_generic_event_t") {
        qintptr result = 0;
        return filter_.nativeEventFilter(eventType, &event, &result);
    }

    bool press(std::uint32_t evdevCode, unsigned state = 0) {
        return send(key(XCB_KEY_PRESS, evdevCode, state));
    }

    bool release(std::uint32_t evdevCode, unsigned state = 0) {
        return send(key(XCB_KEY_RELEASE, evdevCode, state));
    }

    bool sendOther(int type) {
        xcb_generic_event_t event{};
        event.response_type = static_cast<std::uint8_t>(type);
        return send(event);
    }

    /// Lets Qt deliver what it has.
    static void deliver() { QCoreApplication::processEvents(); }

    QWindow window_;
    bool takes_ = true;
    std::vector<KeyEvent> offered_;
    DirectKeyFilter filter_{window_, [this](const KeyEvent& event) {
                                offered_.push_back(event);
                                return takes_;
                            }};
};

TEST_F(DirectKeyFilterTest, PressAndReleaseAreTakenByTheirPositions) {
    EXPECT_TRUE(press(KEY_A));
    EXPECT_TRUE(release(KEY_A));
    EXPECT_THAT(offered_, ElementsAre(down(keyA), up(keyA)));
}

TEST_F(DirectKeyFilterTest, ShiftIsTold) {
    EXPECT_TRUE(press(KEY_A, XCB_MOD_MASK_SHIFT));
    auto expected = down(keyA);
    expected.modifiers = HotkeyModifiers::shift;
    EXPECT_THAT(offered_, ElementsAre(expected));
}

TEST_F(DirectKeyFilterTest, LocksButtonsAndLayoutsDoNotMatter) {
    for (const auto state : {XCB_MOD_MASK_LOCK + 0U, XCB_MOD_MASK_2 + 0U, XCB_BUTTON_MASK_1 + 0U,
                             XCB_BUTTON_MASK_5 + 0U, 0x2000U, 0x6000U}) {
        EXPECT_TRUE(press(KEY_A, state)) << state;
        EXPECT_TRUE(release(KEY_A, state)) << state;
    }
}

TEST_F(DirectKeyFilterTest, KeysWithOtherModifiersGoTheOrdinaryWay) {
    for (const auto modifier :
         {XCB_MOD_MASK_CONTROL, XCB_MOD_MASK_1, XCB_MOD_MASK_3, XCB_MOD_MASK_4, XCB_MOD_MASK_5}) {
        EXPECT_FALSE(press(KEY_A, modifier | XCB_MOD_MASK_SHIFT)) << modifier;
        EXPECT_FALSE(release(KEY_A, modifier | XCB_MOD_MASK_SHIFT)) << modifier;
        deliver();
    }
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, EventsOfAnotherWindowGoTheOrdinaryWay) {
    auto elsewhere = key(XCB_KEY_PRESS, KEY_A);
    ++elsewhere.event;
    EXPECT_FALSE(send(elsewhere));
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, WithoutTheKeyboardKeysGoTheOrdinaryWay) {
    QWindow other;
    other.show();
    other.requestActivate();
    deliver();
    ASSERT_EQ(QGuiApplication::focusWindow(), &other);
    EXPECT_FALSE(press(KEY_A));
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, AModalWindowKeepsTheKeysAway) {
    QWindow dialog;
    dialog.setModality(Qt::ApplicationModal);
    dialog.show();
    window_.requestActivate();
    deliver();
    ASSERT_EQ(QGuiApplication::focusWindow(), &window_);
    ASSERT_EQ(QGuiApplication::modalWindow(), &dialog);
    EXPECT_FALSE(press(KEY_A));
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, EventsThatAProgramSentGoTheOrdinaryWay) {
    constexpr std::uint8_t sent = 0x80;
    EXPECT_FALSE(send(key(XCB_KEY_PRESS | sent, KEY_A)));
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, OtherWindowSystemsAreNotUnderstood) {
    EXPECT_FALSE(send(key(XCB_KEY_PRESS, KEY_A), "other_event_t"));
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, NoKeyOvertakesWhatQtIsStillDelivering) {
    for (const int type : {XCB_BUTTON_PRESS, XCB_FOCUS_IN, XCB_FOCUS_OUT, XCB_GE_GENERIC, XCB_CLIENT_MESSAGE,
                           XCB_UNMAP_NOTIFY, XCB_MAPPING_NOTIFY}) {
        EXPECT_FALSE(sendOther(type)) << type;
        EXPECT_FALSE(press(KEY_A)) << type;
        EXPECT_FALSE(release(KEY_A)) << type;
        EXPECT_THAT(offered_, IsEmpty()) << type;
        deliver();
        EXPECT_TRUE(press(KEY_A)) << type;
        EXPECT_TRUE(release(KEY_A)) << type;
        offered_.clear();
    }
}

TEST_F(DirectKeyFilterTest, RepaintingHoldsNoKeyUp) {
    for (const int type : {XCB_EXPOSE, XCB_GRAPHICS_EXPOSURE, XCB_NO_EXPOSURE}) {
        EXPECT_FALSE(sendOther(type)) << type;
        EXPECT_TRUE(press(KEY_A)) << type;
        EXPECT_TRUE(release(KEY_A)) << type;
    }
}

TEST_F(DirectKeyFilterTest, WhatIsPostedDuringTheDeliveryCountsAsPartOfIt) {
    bool wasTaken = true;
    sendOther(XCB_BUTTON_PRESS);
    // Stands for an item that answers the click a little later.
    QMetaObject::invokeMethod(&window_, [this, &wasTaken] { wasTaken = press(KEY_A); }, Qt::QueuedConnection);
    deliver();
    EXPECT_FALSE(wasTaken);
    EXPECT_THAT(offered_, IsEmpty());
}

TEST_F(DirectKeyFilterTest, NoKeyOvertakesAnotherThatWasDeclined) {
    takes_ = false;
    EXPECT_FALSE(press(KEY_ENTER));
    offered_.clear();
    takes_ = true;
    EXPECT_FALSE(press(KEY_A));
    EXPECT_THAT(offered_, IsEmpty());
    deliver();
    EXPECT_TRUE(press(KEY_S));
    EXPECT_THAT(offered_, ElementsAre(down(keyS)));
}

TEST_F(DirectKeyFilterTest, AKeyStaysOnTheWayThatItsPressWent) {
    takes_ = false;
    EXPECT_FALSE(press(KEY_A));
    deliver();
    takes_ = true;
    offered_.clear();
    // Repeated, and released.
    EXPECT_FALSE(press(KEY_A));
    deliver();
    EXPECT_FALSE(release(KEY_A));
    deliver();
    EXPECT_THAT(offered_, IsEmpty());
    EXPECT_TRUE(press(KEY_A));
    EXPECT_TRUE(release(KEY_A));
    EXPECT_THAT(offered_, ElementsAre(down(keyA), up(keyA)));
}

TEST_F(DirectKeyFilterTest, AReleaseWithAModifierGoesTheOrdinaryWayAndTheNextPressIsTaken) {
    EXPECT_TRUE(press(KEY_A));
    EXPECT_FALSE(release(KEY_A, XCB_MOD_MASK_CONTROL));
    deliver();
    EXPECT_TRUE(press(KEY_A));
    EXPECT_THAT(offered_, ElementsAre(down(keyA), down(keyA)));
}

TEST_F(DirectKeyFilterTest, AWindowThatIsGoneTakesNothing) {
    auto window = std::make_unique<QWindow>();
    window->show();
    DirectKeyFilter filter(*window, [](const KeyEvent&) { return true; });
    auto event = key(XCB_KEY_PRESS, KEY_A);
    event.event = static_cast<xcb_window_t>(window->winId());
    window.reset();
    qintptr result = 0;
    EXPECT_FALSE(filter.nativeEventFilter("xcb_generic_event_t", &event, &result));
}

} // namespace
} // namespace tavro::x11
