#include "Performance/GlobalPlay.h"

#include "Performance/ControllerFixture.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/KeyboardTapAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tavro {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Type = KeyboardTap::Event::Type;
using Verdict = KeyboardTap::Verdict;

constexpr std::int64_t keyA = 0;
constexpr std::int64_t keyZ = 6;
constexpr std::int64_t keyGrave = 50;
constexpr std::int64_t keyReturn = 36;

class GlobalPlayTest : public testing::Test {
protected:
    GlobalPlayTest() {
        tap.answersCreated = true;
        globalPlay.configureGlobalKeyboard();
        instrument.controller.setFocused(true);
    }

    Verdict down(std::int64_t key, HotkeyModifiers modifiers = {}) {
        return deliver({.type = Type::keyDown, .keyCode = key, .modifiers = modifiers});
    }

    Verdict up(std::int64_t key) { return deliver({.type = Type::keyUp, .keyCode = key}); }

    std::string shown() const { return globalPlay.displayedGlobalPlayHotkey().toStdString(); }

    ControllerFixture instrument;
    headless::KeyboardTapAdapter tap;
    GlobalKeyboardController globalKeyboard{tap, instrument.mainActor};
    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    Preferences preferences{defaults, bootClock};
    GlobalPlay globalPlay{instrument.controller, globalKeyboard, preferences, ModifierNaming::words};

private:
    Verdict deliver(const KeyboardTap::Event& event) {
        const auto verdict = tap.client()->handle(event);
        instrument.mainActor.runDue();
        return verdict;
    }
};

TEST_F(GlobalPlayTest, playsTheKeysOfOtherApplications) {
    globalPlay.toggleGlobalPlay();
    EXPECT_EQ(down(keyA), Verdict::swallow);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("on 60"));
    EXPECT_EQ(up(keyA), Verdict::swallow);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("off 60"));
}

TEST_F(GlobalPlayTest, silencesWhatSoundsWhenTurnedOff) {
    globalPlay.toggleGlobalPlay();
    down(keyA);
    instrument.takeSent();
    down(keyGrave);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("off 60"));
    EXPECT_FALSE(globalPlay.globalPlayBinding());
    up(keyA);
    EXPECT_THAT(instrument.takeSent(), IsEmpty());
}

TEST_F(GlobalPlayTest, theBindingTogglesOnlyWhenTheValueDiffers) {
    globalPlay.setGlobalPlayBinding(false);
    EXPECT_THAT(tap.calls, testing::Not(testing::Contains(headless::KeyboardTapAdapter::Call::create)));
    globalPlay.setGlobalPlayBinding(true);
    EXPECT_TRUE(globalPlay.globalPlayBinding());
    globalPlay.setGlobalPlayBinding(true);
    EXPECT_TRUE(globalPlay.globalPlayBinding());
    globalPlay.setGlobalPlayBinding(false);
    EXPECT_FALSE(globalPlay.globalPlayBinding());
}

TEST_F(GlobalPlayTest, losingTheFocusSilencesOnlyWhileOff) {
    instrument.controller.handleKeyDown(U'a');
    globalPlay.toggleGlobalPlay();
    instrument.takeSent();
    instrument.controller.setFocused(false);
    EXPECT_THAT(instrument.takeSent(), IsEmpty());
    // The release of a key that went down in the window.
    EXPECT_EQ(up(keyA), Verdict::swallow);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("off 60"));

    instrument.controller.setFocused(true);
    globalPlay.toggleGlobalPlay();
    instrument.controller.handleKeyDown(U'a');
    instrument.takeSent();
    instrument.controller.setFocused(false);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("off 60"));
}

TEST_F(GlobalPlayTest, followsTheLayout) {
    globalPlay.toggleGlobalPlay();
    instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwertz; });
    down(keyZ);
    EXPECT_THAT(instrument.controller.activeKeys(), ElementsAre(U'y'));
    up(keyZ);
    instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; });
    down(keyZ);
    EXPECT_THAT(instrument.controller.activeKeys(), ElementsAre(U'z'));
}

TEST_F(GlobalPlayTest, changedSettingsForgetTheHeldKeys) {
    globalPlay.toggleGlobalPlay();
    down(keyA);
    instrument.change([](auto& state) { state.rootSemitone = 1; });
    EXPECT_THAT(instrument.takeSent(), ElementsAre("on 60", "off 60"));
    down(keyA);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("on 61"));
}

TEST_F(GlobalPlayTest, takesAndShowsARecordedHotkey) {
    EXPECT_EQ(shown(), "^");
    int changes = 0;
    QObject::connect(&globalPlay, &GlobalPlay::hotkeyChanged, &globalPlay, [&] { ++changes; });
    globalPlay.setRecordingGlobalPlayHotkey(true);
    EXPECT_TRUE(globalPlay.isRecordingGlobalPlayHotkey());
    globalPlay.setGlobalPlayHotkey({U'z', keyZ, HotkeyModifiers::control | HotkeyModifiers::option});
    EXPECT_FALSE(globalPlay.isRecordingGlobalPlayHotkey());
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(globalKeyboard.hotkey().keyCode, keyZ);

    instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwertz; });
    EXPECT_EQ(shown(), "Ctrl+Alt+y");
    EXPECT_EQ(globalKeyboard.hotkey().character, U'y');
    instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; });
    EXPECT_EQ(shown(), "Ctrl+Alt+z");

    globalPlay.toggleGlobalPlay();
    EXPECT_EQ(down(keyGrave), Verdict::pass);
    EXPECT_EQ(down(keyZ, HotkeyModifiers::control | HotkeyModifiers::option), Verdict::swallow);
    EXPECT_FALSE(globalPlay.globalPlayBinding());
}

TEST_F(GlobalPlayTest, showsTheRecordedTextWhereThePositionHasNoCharacter) {
    globalPlay.setGlobalPlayHotkey({U'^', keyGrave, HotkeyModifiers::shift});
    EXPECT_EQ(shown(), "Shift+^");
    globalPlay.setGlobalPlayHotkey({U'q', std::nullopt, {}});
    EXPECT_EQ(shown(), "q");
    EXPECT_EQ(globalPlay.globalPlayHotkey(), (ToggleHotkey{U'q', std::nullopt, {}}));
}

TEST_F(GlobalPlayTest, showsTheKeyLeftOfOneByWhatTheLayoutPrintsThere) {
    for (const auto keyCode : {std::optional<std::int64_t>(), std::optional<std::int64_t>(keyGrave)}) {
        globalPlay.setGlobalPlayHotkey({U'^', keyCode, {}});
        instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwertz; });
        EXPECT_EQ(shown(), "^");
        instrument.change([](auto& state) { state.keyboardLayout = KeyboardLayoutKind::qwerty; });
        EXPECT_EQ(shown(), "`");
        // What is stored and compared stays.
        EXPECT_EQ(globalPlay.globalPlayHotkey().character, U'^');
    }
}

TEST_F(GlobalPlayTest, showsKeysWithoutATextByName) {
    constexpr std::int64_t keyF5 = 96;
    globalPlay.setGlobalPlayHotkey({U'^', keyF5, HotkeyModifiers::shift});
    EXPECT_EQ(shown(), "Shift+F5");
    EXPECT_EQ(globalKeyboard.hotkey(), (ToggleHotkey{U'^', keyF5, HotkeyModifiers::shift}));
    constexpr std::int64_t keypad5 = 87;
    globalPlay.setGlobalPlayHotkey({U'5', keypad5, {}});
    EXPECT_EQ(shown(), "Keypad 5");
    constexpr std::int64_t space = 49;
    globalPlay.setGlobalPlayHotkey({U'^', space, {}});
    EXPECT_EQ(shown(), "Space");
    constexpr std::int64_t unnamed = 0x10A4;
    globalPlay.setGlobalPlayHotkey({U'^', unnamed, {}});
    EXPECT_EQ(shown(), "Key 4260");
}

TEST_F(GlobalPlayTest, tellsWhenTheHotkeyTakesAPlayingKey) {
    EXPECT_FALSE(globalPlay.hotkeyTakesPlayingKey());
    globalPlay.setGlobalPlayHotkey({U'a', keyA, {}});
    EXPECT_TRUE(globalPlay.hotkeyTakesPlayingKey());
    globalPlay.setGlobalPlayHotkey({U'a', keyA, HotkeyModifiers::shift});
    EXPECT_TRUE(globalPlay.hotkeyTakesPlayingKey());
    globalPlay.setGlobalPlayHotkey({U'a', keyA, HotkeyModifiers::control});
    EXPECT_FALSE(globalPlay.hotkeyTakesPlayingKey());
    globalPlay.setGlobalPlayHotkey({U'a', std::nullopt, {}});
    EXPECT_TRUE(globalPlay.hotkeyTakesPlayingKey());
    globalPlay.setGlobalPlayHotkey({U'^', keyReturn, {}});
    EXPECT_FALSE(globalPlay.hotkeyTakesPlayingKey());
}

TEST_F(GlobalPlayTest, namesModifiersByTheirSymbolsWhereKeyboardsDo) {
    GlobalPlay withSymbols(instrument.controller, globalKeyboard, preferences, ModifierNaming::symbols);
    withSymbols.setGlobalPlayHotkey({U'k', 40, HotkeyModifiers::option | HotkeyModifiers::command});
    EXPECT_EQ(withSymbols.displayedGlobalPlayHotkey().toStdString(), "⌥⌘k");
}

TEST_F(GlobalPlayTest, storesTheHotkeyAndBeginsWithTheStoredOne) {
    globalPlay.setGlobalPlayHotkey({U'k', 40, HotkeyModifiers::control});
    GlobalPlay next(instrument.controller, globalKeyboard, preferences, ModifierNaming::words);
    EXPECT_EQ(next.displayedGlobalPlayHotkey().toStdString(), "Ctrl+k");
    next.configureGlobalKeyboard();
    EXPECT_EQ(globalKeyboard.hotkey(), (ToggleHotkey{U'k', 40, HotkeyModifiers::control}));
}

TEST_F(GlobalPlayTest, leavesTheKeysToItsOwnWindow) {
    globalPlay.toggleGlobalPlay();
    globalPlay.setApplicationActive(true);
    EXPECT_EQ(down(keyA), Verdict::pass);
    EXPECT_THAT(instrument.takeSent(), IsEmpty());
    EXPECT_EQ(down(keyReturn), Verdict::pass);
    globalPlay.setApplicationActive(false);
    EXPECT_EQ(down(keyA), Verdict::swallow);
    EXPECT_THAT(instrument.takeSent(), ElementsAre("on 60"));
}

TEST_F(GlobalPlayTest, endsTheRecordingWhenTheUserGoesElsewhere) {
    globalPlay.setApplicationActive(true);
    globalPlay.setRecordingGlobalPlayHotkey(true);
    globalPlay.setApplicationActive(false);
    EXPECT_FALSE(globalPlay.isRecordingGlobalPlayHotkey());
}

} // namespace
} // namespace tavro
