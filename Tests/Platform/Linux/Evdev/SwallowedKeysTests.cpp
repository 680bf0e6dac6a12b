#include "Platform/Linux/Evdev/SwallowedKeys.h"

#include "Platform/Linux/KeyCodes/EvdevKeyCodes.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <utility>

namespace tavro::evdev {
namespace {

using Verdict = KeyboardTap::Verdict;

/// Swallows what it is given; every verdict must be asked for a press, and nothing may be acted on.
class AnsweringClient : public KeyboardTap::Client {
public:
    void swallow(std::uint32_t key, HotkeyModifiers modifiers = {}) {
        swallowed_.emplace(linuxos::EvdevKeyCodes::virtualKeyCode(key), modifiers.rawValue());
    }

    void swallowLetters(std::size_t count) {
        for (std::uint32_t key = KEY_Q; key < KEY_Q + count; ++key) {
            swallow(key);
            swallow(key, HotkeyModifiers::shift);
        }
    }

    Verdict handle(const KeyboardTap::Event&) override {
        ADD_FAILURE() << "it was told a key";
        return Verdict::pass;
    }

    [[nodiscard]] Verdict verdict(const KeyboardTap::Event& event) const override {
        EXPECT_EQ(event.type, KeyboardTap::Event::Type::keyDown);
        EXPECT_FALSE(event.isAutorepeat);
        return swallowed_.contains({event.keyCode, event.modifiers.rawValue()}) ? Verdict::swallow
                                                                                : Verdict::pass;
    }

    void reportTaken(std::vector<KeyboardTap::Event>) override { ADD_FAILURE() << "nothing is taken"; }

    void tapEnded(KeyboardTap::End) override { ADD_FAILURE() << "nothing ended"; }

private:
    std::set<std::pair<std::int64_t, std::int64_t>> swallowed_;
};

TEST(SwallowedKeys, ManyKeysArePlayed) {
    AnsweringClient client;
    client.swallowLetters(SwallowedKeys::fewestPlayingKeys);
    SwallowedKeys keys;
    EXPECT_FALSE(keys.arePlayed());
    keys.ask(client);
    EXPECT_TRUE(keys.arePlayed());
    keys.ask(AnsweringClient());
    EXPECT_FALSE(keys.arePlayed());
}

TEST(SwallowedKeys, FewKeysAreAHotkey) {
    AnsweringClient client;
    client.swallowLetters(SwallowedKeys::fewestPlayingKeys - 1);
    SwallowedKeys keys;
    keys.ask(client);
    EXPECT_FALSE(keys.arePlayed());
}

TEST(SwallowedKeys, WithoutPlayingEverythingIsTold) {
    AnsweringClient client;
    client.swallow(KEY_GRAVE);
    SwallowedKeys keys;
    keys.ask(client);
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_GRAVE, {}, Verdict::swallow));
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_Q, {}, Verdict::pass));
}

TEST(SwallowedKeys, WhilePlayingOnlyTheHotkeyAndWhatPassesIsTold) {
    AnsweringClient idle;
    idle.swallow(KEY_GRAVE);
    AnsweringClient playing;
    playing.swallow(KEY_GRAVE);
    playing.swallowLetters(12);
    SwallowedKeys keys;
    keys.ask(idle);
    keys.ask(playing);
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_GRAVE, {}, Verdict::swallow));
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_ENTER, {}, Verdict::pass));
    EXPECT_FALSE(keys.isToldUngrabbed(KEY_Q, {}, Verdict::swallow));
    EXPECT_FALSE(keys.isToldUngrabbed(KEY_Q, HotkeyModifiers::shift, Verdict::swallow));
}

TEST(SwallowedKeys, HotkeyWithModifiersIsTold) {
    AnsweringClient idle;
    idle.swallow(KEY_Q, HotkeyModifiers::shift);
    AnsweringClient playing;
    playing.swallowLetters(12);
    SwallowedKeys keys;
    keys.ask(idle);
    keys.ask(playing);
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_Q, HotkeyModifiers::shift, Verdict::swallow));
    EXPECT_FALSE(keys.isToldUngrabbed(KEY_Q, {}, Verdict::swallow));
    // Nothing that plays comes with these.
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_W, HotkeyModifiers::control, Verdict::swallow));
}

TEST(SwallowedKeys, HotkeyIsRememberedWhileTheOwnWindowIsInFront) {
    AnsweringClient idle;
    idle.swallow(KEY_GRAVE);
    AnsweringClient playing;
    playing.swallowLetters(12);
    SwallowedKeys keys;
    keys.ask(idle);
    keys.ask(AnsweringClient());
    keys.ask(playing);
    EXPECT_TRUE(keys.isToldUngrabbed(KEY_GRAVE, {}, Verdict::swallow));
}

} // namespace
} // namespace tavro::evdev
