#include "Platform/Linux/X11/HeldKeyWatch.h"

#include <QByteArray>

#include <linux/input-event-codes.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tavro::x11 {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::uint8_t extension = 131;

/// Notes what it is told.
struct ToldNotices final : HeldKeyNotices {
    void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) override {
        told.push_back("up " + std::to_string(keyCode) + " at " + std::to_string(time));
    }

    void keepSilent(std::int64_t keyCode, std::uint32_t time) override {
        told.push_back("held " + std::to_string(keyCode) + " at " + std::to_string(time));
    }

    [[nodiscard]] bool isAwaited(std::int64_t keyCode) const override { return keyCode == awaited; }

    std::vector<std::string> told;
    std::int64_t awaited = -1;
};

/// Positions are those of the kernel; A is 0 in the virtual key codes that are told, and Alt, which no layout
/// has, 4096 and its own.
class HeldKeyWatchTest : public testing::Test {
protected:
    bool send(void* event) { return watch.nativeEventFilter("xcb_generic_event_t", event, nullptr); }

    bool sendKey(std::uint8_t type, std::uint32_t evdevCode, xcb_timestamp_t time = 0) {
        xcb_key_press_event_t event{};
        event.response_type = type;
        event.detail = static_cast<xcb_keycode_t>(evdevCode + 8);
        event.time = time;
        return send(&event);
    }

    bool sendRaw(std::uint32_t evdevCode, xcb_timestamp_t time, std::uint8_t of = extension,
                 std::uint16_t type = XCB_INPUT_RAW_KEY_RELEASE) {
        xcb_input_raw_key_release_event_t event{};
        event.response_type = XCB_GE_GENERIC;
        event.extension = of;
        event.event_type = type;
        event.detail = evdevCode + 8;
        event.time = time;
        return send(&event);
    }

    void sendKeymap(const std::vector<std::uint32_t>& evdevCodes) {
        xcb_keymap_notify_event_t event{};
        event.response_type = XCB_KEYMAP_NOTIFY;
        for (const auto evdevCode : evdevCodes) {
            const auto key = evdevCode + 8;
            event.keys[key / 8 - 1] |= static_cast<std::uint8_t>(1U << (key % 8));
        }
        EXPECT_FALSE(send(&event));
    }

    std::vector<std::string> takeTold() { return std::exchange(notes.told, {}); }

    ToldNotices notes;
    const std::vector<std::string>& told = notes.told;
    std::int64_t& awaited = notes.awaited;
    HeldKeyWatch watch{extension, notes};
};

TEST_F(HeldKeyWatchTest, TellsTheReleaseOfAKeyThatWentDownHereOnce) {
    EXPECT_FALSE(sendKey(XCB_KEY_PRESS, KEY_A, 5));
    EXPECT_TRUE(sendRaw(KEY_A, 7));
    EXPECT_THAT(takeTold(), ElementsAre("up 0 at 7"));
    EXPECT_FALSE(sendKey(XCB_KEY_RELEASE, KEY_A, 7));
    EXPECT_TRUE(sendRaw(KEY_A, 9));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HeldKeyWatchTest, DropsWhatBelongsToOthers) {
    EXPECT_TRUE(sendRaw(KEY_A, 7));
    sendKey(XCB_KEY_PRESS, KEY_S);
    EXPECT_TRUE(sendRaw(KEY_A, 8));
    // Of another extension, or no release.
    EXPECT_FALSE(sendRaw(KEY_S, 9, extension + 1));
    EXPECT_FALSE(sendRaw(KEY_S, 9, extension, XCB_INPUT_RAW_KEY_PRESS));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HeldKeyWatchTest, TellsTheReleaseOfAKeyThatIsAwaited) {
    awaited = 0;
    EXPECT_TRUE(sendRaw(KEY_A, 7));
    EXPECT_TRUE(sendRaw(KEY_S, 8));
    EXPECT_THAT(told, ElementsAre("up 0 at 7"));
}

TEST_F(HeldKeyWatchTest, KnowsNoTimeBeforeItWasToldOne) {
    sendKeymap({KEY_A});
    EXPECT_THAT(told, ElementsAre("held 0 at 0"));
}

TEST_F(HeldKeyWatchTest, AReleaseThatTheWindowWasSentIsNotWaitedForAnyMore) {
    sendKey(XCB_KEY_PRESS, KEY_A);
    sendKey(XCB_KEY_RELEASE, KEY_A);
    EXPECT_TRUE(sendRaw(KEY_A, 7));
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(HeldKeyWatchTest, TheKeyboardThatComesBackTellsWhatWasMissed) {
    sendKey(XCB_KEY_PRESS, KEY_A, 5);
    sendKey(XCB_KEY_PRESS, KEY_S, 6);
    sendKeymap({KEY_S, KEY_LEFTALT});
    EXPECT_THAT(takeTold(), ElementsAre("up 0 at 6", "held 4152 at 7"));
    // That is watched as well by now, and told once.
    sendKeymap({KEY_S, KEY_LEFTALT});
    EXPECT_THAT(told, IsEmpty());
    EXPECT_TRUE(sendRaw(KEY_LEFTALT, 8));
    EXPECT_THAT(told, testing::SizeIs(1));
}

TEST_F(HeldKeyWatchTest, EventsOfAnotherWindowSystemAreNone) {
    xcb_key_press_event_t event{};
    event.response_type = XCB_KEY_PRESS;
    event.detail = KEY_A + 8;
    EXPECT_FALSE(watch.nativeEventFilter("windows_generic_MSG", &event, nullptr));
    EXPECT_TRUE(sendRaw(KEY_A, 7));
    EXPECT_THAT(told, IsEmpty());
}

} // namespace
} // namespace tavro::x11
