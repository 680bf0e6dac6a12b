#include "Platform/Linux/X11/PressTable.h"
#include "Platform/Linux/X11/VerdictSample.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

namespace tavro::x11 {
namespace {

using Event = KeyboardTap::Event;
using Verdict = KeyboardTap::Verdict;

constexpr std::uint8_t keyOfA = 38;
constexpr std::uint8_t keyOfS = 39;
constexpr std::uint8_t keyOfQ = 24;
constexpr std::int64_t codeOfA = 0;
constexpr std::int64_t codeOfS = 1;
constexpr std::int64_t codeOfQ = 12;

class Client final : public KeyboardTap::Client {
public:
    using Wish = std::function<bool(std::int64_t keyCode, HotkeyModifiers modifiers)>;

    explicit Client(Wish wish) : wants(std::move(wish)) {}

    Wish wants;

    Verdict handle(const Event& event) override { return verdict(event); }

    [[nodiscard]] Verdict verdict(const Event& event) const override {
        EXPECT_EQ(event.type, Event::Type::keyDown);
        EXPECT_FALSE(event.isAutorepeat);
        return wants(event.keyCode, event.modifiers) ? Verdict::swallow : Verdict::pass;
    }

    void reportTaken(std::vector<Event> /*presses*/) override {}

    void tapEnded(KeyboardTap::End /*end*/) override {}
};

/// A and S as keys to play, and Q with Control as the hotkey.
bool usualWish(std::int64_t keyCode, HotkeyModifiers modifiers) {
    return keyCode == codeOfQ ? modifiers == HotkeyModifiers::control
                              : (keyCode == codeOfA || keyCode == codeOfS) && !modifiers.makesShortcut();
}

KeySet allKeys() {
    return ~KeySet();
}

TEST(PressTable, HoldsWhatTheClientWants) {
    const auto table = PressTable::wanted(Client(&usualWish), allKeys());
    const auto shift = HotkeyModifiers::shift;
    EXPECT_EQ(table.modifiersOf(keyOfA), (std::vector{HotkeyModifiers(), shift}));
    EXPECT_EQ(table.modifiersOf(keyOfS), (std::vector{HotkeyModifiers(), shift}));
    EXPECT_EQ(table.modifiersOf(keyOfQ), (std::vector{HotkeyModifiers::control}));
    EXPECT_EQ(table.presses().size(), 5U);
}

TEST(PressTable, LeavesOutKeysThatAreNotAskedFor) {
    auto keys = allKeys();
    keys.reset(keyOfA);
    const auto table = PressTable::wanted(Client(&usualWish), keys);
    EXPECT_FALSE(table.containsAnyOf(keyOfA));
    EXPECT_TRUE(table.containsAnyOf(keyOfS));
}

TEST(PressTable, KeysToPlayAreInWithAndWithoutShift) {
    Client client(&usualWish);
    EXPECT_EQ(PressTable::wanted(client, allKeys()).playingKeys(), KeySet().set(keyOfA).set(keyOfS));
    client.wants = [](std::int64_t keyCode, HotkeyModifiers modifiers) {
        return (keyCode == codeOfA && modifiers == HotkeyModifiers()) ||
               (keyCode == codeOfS && modifiers == HotkeyModifiers::shift);
    };
    EXPECT_TRUE(PressTable::wanted(client, allKeys()).playingKeys().none());
}

TEST(PressTable, DifferenceAndSumMakeTheWholeAgain) {
    const auto whole = PressTable::wanted(Client(&usualWish), allKeys());
    PressTable part;
    part.insert(keyOfA, HotkeyModifiers::shift);
    part.insert(keyOfQ, {});
    auto rest = whole.without(part);
    EXPECT_FALSE(rest.contains(keyOfA, HotkeyModifiers::shift));
    EXPECT_TRUE(rest.contains(keyOfA, {}));
    EXPECT_EQ(rest.presses().size(), 4U);
    rest.insert(keyOfA, HotkeyModifiers::shift);
    EXPECT_EQ(rest, whole);
    EXPECT_EQ(whole.without(whole), PressTable());
}

TEST(PressTable, PressesAreInTheOrderOfTheirCodes) {
    PressTable table;
    table.insert(keyOfQ, HotkeyModifiers::control);
    table.insert(keyOfA, HotkeyModifiers::shift);
    table.insert(keyOfA, {});
    const auto down = Event::Type::keyDown;
    EXPECT_EQ(table.presses(), (std::vector<Event>{{down, codeOfA, HotkeyModifiers(), false},
                                                   {down, codeOfA, HotkeyModifiers::shift, false},
                                                   {down, codeOfQ, HotkeyModifiers::control, false}}));
}

TEST(VerdictSample, SeesThatThePlayingHasEndedAlsoWhenOneOfTheKeysIsTheHotkey) {
    for (const auto hotkey : {codeOfA, codeOfS}) {
        auto isPlaying = true;
        const Client client([&](std::int64_t keyCode, HotkeyModifiers modifiers) {
            const auto isHotkey = keyCode == hotkey && modifiers == HotkeyModifiers();
            return isHotkey || (isPlaying && keyCode != codeOfQ && usualWish(keyCode, modifiers));
        });
        const VerdictSample sample(PressTable::wanted(client, allKeys()));
        EXPECT_FALSE(sample.hasChanged(client));
        isPlaying = false;
        EXPECT_TRUE(sample.hasChanged(client));
    }
}

TEST(VerdictSample, WithoutKeysToPlayNothingChanges) {
    Client client([](std::int64_t keyCode, HotkeyModifiers modifiers) {
        return keyCode == codeOfQ && modifiers == HotkeyModifiers();
    });
    const VerdictSample sample(PressTable::wanted(client, allKeys()));
    client.wants = [](std::int64_t, HotkeyModifiers) { return false; };
    EXPECT_FALSE(sample.hasChanged(client));
}

} // namespace
} // namespace tavro::x11
