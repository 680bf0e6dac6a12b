#include "KeyboardInput/GlobalKeyRules.h"

#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <sstream>

namespace tavro {

void PrintTo(const GlobalKeyRules::Decision& decision, std::ostream* out) {
    *out << (decision.verdict == KeyboardTap::Verdict::pass ? "pass" : "swallow") << ", action "
         << static_cast<int>(decision.action) << ", \"" << toUtf8(decision.character) << "\"";
}

namespace {

using Action = GlobalKeyRules::Action;
using Decision = GlobalKeyRules::Decision;
using Event = KeyboardTap::Event;
using Verdict = KeyboardTap::Verdict;
using Type = KeyboardTap::Event::Type;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyS = 1;
constexpr std::int64_t keyZ = 6;
constexpr std::int64_t keyK = 40;
constexpr std::int64_t keyIso = 10;
constexpr std::int64_t keyGrave = 50;
constexpr std::int64_t keyReturn = 36;
constexpr std::int64_t keyLeft = 123;
constexpr auto control = HotkeyModifiers::control;
constexpr auto option = HotkeyModifiers::option;
constexpr auto shift = HotkeyModifiers::shift;

Event down(std::int64_t keyCode, HotkeyModifiers modifiers = {}) {
    return {.type = Type::keyDown, .keyCode = keyCode, .modifiers = modifiers};
}

Event repeat(std::int64_t keyCode, HotkeyModifiers modifiers = {}) {
    return {.type = Type::keyDown, .keyCode = keyCode, .modifiers = modifiers, .isAutorepeat = true};
}

Event up(std::int64_t keyCode, HotkeyModifiers modifiers = {}) {
    return {.type = Type::keyUp, .keyCode = keyCode, .modifiers = modifiers};
}

constexpr Decision passes{.verdict = Verdict::pass};
constexpr Decision swallows{.verdict = Verdict::swallow};

constexpr Decision plays(Character character) {
    return {.verdict = Verdict::swallow, .action = Action::keyDown, .character = character};
}

constexpr Decision releases(Character character, Verdict verdict = Verdict::swallow) {
    return {.verdict = verdict, .action = Action::keyUp, .character = character};
}

constexpr Decision toggles{.verdict = Verdict::swallow, .action = Action::toggle};

class EnabledRules : public testing::Test {
protected:
    EnabledRules() { rules.setEnabled(true); }

    GlobalKeyRules rules;
};

TEST_F(EnabledRules, playAKeyOnceHoweverLongItIsHeld) {
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
    EXPECT_EQ(rules.decide(repeat(keyA)), swallows);
    EXPECT_EQ(rules.decide(down(keyA)), swallows);
    EXPECT_EQ(rules.decide(up(keyA)), releases(U'a'));
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
}

TEST_F(EnabledRules, playByTheLayout) {
    EXPECT_EQ(rules.decide(down(keyZ)), plays(U'y'));
    EXPECT_EQ(rules.decide(up(keyZ)), releases(U'y'));
    rules.layoutKind = KeyboardLayoutKind::qwerty;
    EXPECT_EQ(rules.decide(down(keyZ)), plays(U'z'));
}

TEST_F(EnabledRules, playShiftedKeys) {
    EXPECT_EQ(rules.decide(down(keyA, shift)), plays(U'a'));
    EXPECT_EQ(rules.decide(up(keyA)), releases(U'a'));
}

TEST_F(EnabledRules, letShortcutsPass) {
    for (const auto modifier : {HotkeyModifiers::command, control, option}) {
        EXPECT_EQ(rules.decide(down(keyA, modifier)), passes);
        EXPECT_EQ(rules.decide(repeat(keyA, modifier)), passes);
        EXPECT_EQ(rules.decide(up(keyA, modifier)), passes);
        EXPECT_EQ(rules.decide(down(keyA, modifier | shift)), passes);
    }
}

TEST_F(EnabledRules, letKeysOutsideThePlayingAreaPass) {
    for (const auto key : {keyReturn, keyLeft, std::int64_t{0x1234}}) {
        EXPECT_EQ(rules.decide(down(key)), passes);
        EXPECT_EQ(rules.decide(up(key)), passes);
    }
}

TEST_F(EnabledRules, releaseAPlayedKeyWhateverIsHeldMeanwhile) {
    rules.decide(down(keyA));
    EXPECT_EQ(rules.decide(up(keyA, control)), releases(U'a', Verdict::pass));
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
}

TEST_F(EnabledRules, releaseAPlayedKeyWhenTheProgramHasComeToTheFront) {
    rules.decide(down(keyA));
    rules.isApplicationActive = true;
    EXPECT_EQ(rules.decide(repeat(keyA)), passes);
    EXPECT_EQ(rules.decide(up(keyA)), releases(U'a', Verdict::pass));
    rules.isApplicationActive = false;
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
}

TEST_F(EnabledRules, releaseAKeyByTheCharacterThatItWasPlayedAs) {
    rules.decide(down(keyZ));
    rules.layoutKind = KeyboardLayoutKind::qwerty;
    EXPECT_EQ(rules.decide(up(keyZ)), releases(U'y'));
}

TEST_F(EnabledRules, releaseAKeyThatWentDownInTheProgramsOwnWindow) {
    EXPECT_EQ(rules.decide(up(keyA)), releases(U'a'));
}

TEST_F(EnabledRules, startNothingByTheRepeatsOfAKeyThatWasDownBefore) {
    EXPECT_EQ(rules.decide(repeat(keyA)), swallows);
}

TEST_F(EnabledRules, leaveTheKeysToTheWindowInFront) {
    rules.isApplicationActive = true;
    EXPECT_EQ(rules.decide(down(keyA)), passes);
    EXPECT_EQ(rules.decide(up(keyA)), passes);
    EXPECT_EQ(rules.decide(down(keyGrave)), passes);
    EXPECT_TRUE(rules.isEnabled());
}

TEST_F(EnabledRules, followTheHotkeyWithTheNextKey) {
    EXPECT_EQ(rules.decide(down(keyGrave)), toggles);
    EXPECT_FALSE(rules.isEnabled());
    EXPECT_EQ(rules.decide(down(keyA)), passes);
    EXPECT_EQ(rules.decide(up(keyA)), passes);
    EXPECT_EQ(rules.decide(repeat(keyGrave)), swallows);
    EXPECT_FALSE(rules.isEnabled());
    EXPECT_EQ(rules.decide(up(keyGrave)), passes);
    EXPECT_EQ(rules.decide(down(keyGrave)), toggles);
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
}

TEST_F(EnabledRules, forgetHeldKeysWhenTurnedOff) {
    rules.decide(down(keyA));
    rules.setEnabled(false);
    EXPECT_EQ(rules.decide(up(keyA)), passes);
    rules.setEnabled(true);
    EXPECT_EQ(rules.decide(down(keyA)), plays(U'a'));
}

TEST_F(EnabledRules, haveTheTapSwitchedOnAgain) {
    const Decision wanted{.verdict = Verdict::pass, .action = Action::enableTap};
    EXPECT_EQ(rules.decide({.type = Type::disabledByTimeout}), wanted);
    EXPECT_EQ(rules.decide({.type = Type::disabledByUserInput}), wanted);
    EXPECT_EQ(rules.decide({.type = Type::other, .keyCode = keyA}), passes);
}

TEST(GlobalKeyRules, doNothingWhileOff) {
    GlobalKeyRules rules;
    for (const auto& event : {down(keyA), repeat(keyA), up(keyA), down(keyReturn), down(keyA, control)}) {
        EXPECT_EQ(rules.decide(event), passes);
    }
}

TEST(GlobalKeyRules, toggleByBothCaretKeys) {
    GlobalKeyRules rules;
    EXPECT_EQ(rules.decide(down(keyIso)), toggles);
    EXPECT_TRUE(rules.isEnabled());
    EXPECT_EQ(rules.decide(down(keyGrave)), toggles);
    EXPECT_FALSE(rules.isEnabled());
    EXPECT_EQ(rules.decide(down(keyGrave, shift)), passes);
}

TEST(GlobalKeyRules, toggleOnlyByTheKeyCodeWhenThereIsOne) {
    GlobalKeyRules rules;
    rules.hotkey = {.character = U'^', .keyCode = keyIso, .modifiers = {}};
    EXPECT_EQ(rules.decide(down(keyGrave)), passes);
    EXPECT_EQ(rules.decide(down(keyIso)), toggles);
}

// The whole field, against the rules written down once more as a list that is read from top to bottom.

struct Situation {
    bool isFront;
    bool isOn;
    ToggleHotkey hotkey;
    bool isHeld;
    Event event;
};

Decision expected(const Situation& at) {
    const auto& event = at.event;
    const auto character = PhysicalKeyMapper::character(event.keyCode, KeyboardLayoutKind::qwertz);
    const bool isDown = event.type == Type::keyDown;
    const bool hasShortcut = (event.modifiers.rawValue() & 7) != 0;
    const auto released = at.isHeld && !isDown;
    if (at.isFront) {
        return released ? releases(*character, Verdict::pass) : passes;
    }
    const bool isHotkeysKey = at.hotkey.keyCode ? event.keyCode == *at.hotkey.keyCode
                              : at.hotkey.character == U'^'
                                  ? event.keyCode == keyIso || event.keyCode == keyGrave
                                  : character == at.hotkey.character;
    if (isDown && isHotkeysKey && event.modifiers == at.hotkey.modifiers) {
        return event.isAutorepeat ? swallows : toggles;
    }
    if (!at.isOn || hasShortcut) {
        return released ? releases(*character, Verdict::pass) : passes;
    }
    if (!character) {
        return passes;
    }
    if (!isDown) {
        return releases(*character);
    }
    return at.isHeld || event.isAutorepeat ? swallows : plays(*character);
}

std::string describe(const Situation& at) {
    std::ostringstream text;
    text << (at.isFront ? "front" : "behind") << (at.isOn ? ", on" : ", off") << ", hotkey \""
         << toUtf8(at.hotkey.character) << "\" code " << at.hotkey.keyCode.value_or(-1) << " modifiers "
         << at.hotkey.modifiers.rawValue() << (at.isHeld ? ", held" : "") << ", key " << at.event.keyCode
         << " modifiers " << at.event.modifiers.rawValue() << (at.event.isAutorepeat ? " repeat" : "")
         << (at.event.type == Type::keyDown ? " down" : " up");
    return text.str();
}

void check(const Situation& at) {
    GlobalKeyRules rules;
    // A key of its own while it goes down, so that no hotkey gets it.
    rules.hotkey = {.character = U'^', .keyCode = 999, .modifiers = {}};
    rules.setEnabled(at.isOn);
    if (at.isHeld) {
        ASSERT_EQ(rules.decide(down(at.event.keyCode)).action, Action::keyDown);
    }
    rules.isApplicationActive = at.isFront;
    rules.hotkey = at.hotkey;
    const auto wanted = expected(at);
    EXPECT_EQ(rules.verdict(at.event), wanted.verdict) << describe(at);
    EXPECT_EQ(rules.decide(at.event), wanted) << describe(at);
    EXPECT_EQ(rules.isEnabled(), at.isOn != (wanted.action == Action::toggle)) << describe(at);
}

TEST(GlobalKeyRules, decideEverySituationByTheList) {
    std::size_t situations = 0;
    const std::array keys{keyA, keyS, keyZ, keyK, keyIso, keyGrave, keyReturn, keyLeft};
    const std::array<std::pair<Character, std::optional<std::int64_t>>, 5> hotkeys{{{U'^', std::nullopt},
                                                                                    {U'k', std::nullopt},
                                                                                    {U'y', std::nullopt},
                                                                                    {U'^', keyIso},
                                                                                    {U'x', keyReturn}}};
    for (const bool isFront : {false, true}) {
        for (const bool isOn : {false, true}) {
            for (const auto& [character, keyCode] : hotkeys) {
                for (const std::int64_t hotkeyModifiers : {0, 2, 6, 8}) {
                    for (const auto key : keys) {
                        for (std::int64_t modifiers = 0; modifiers < 16; ++modifiers) {
                            for (const auto& event : {down(key, HotkeyModifiers(modifiers)),
                                                      repeat(key, HotkeyModifiers(modifiers)),
                                                      up(key, HotkeyModifiers(modifiers))}) {
                                Situation at{.isFront = isFront,
                                             .isOn = isOn,
                                             .hotkey = {character, keyCode, HotkeyModifiers(hotkeyModifiers)},
                                             .isHeld = false,
                                             .event = event};
                                check(at);
                                at.isHeld =
                                    isOn &&
                                    PhysicalKeyMapper::character(key, KeyboardLayoutKind::qwertz).has_value();
                                if (at.isHeld) {
                                    check(at);
                                }
                                ++situations;
                            }
                        }
                    }
                }
            }
        }
    }
    EXPECT_EQ(situations, 2U * 2 * 5 * 4 * 8 * 16 * 3);
}

} // namespace
} // namespace tavro
