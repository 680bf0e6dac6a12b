#include "Performance/GlobalPlay.h"

#include "KeyboardInput/KeyNames.h"
#include "KeyboardInput/ToggleHotkey.h"
#include "KeyboardMapping/KeyboardLayout.h"
#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <utility>

namespace tavro {

GlobalPlay::GlobalPlay(PerformanceController& performance, GlobalKeyboardController& globalKeyboard,
                       Preferences& preferences, ModifierNaming naming)
    : performance_(performance), globalKeyboard_(globalKeyboard), preferences_(preferences), naming_(naming),
      hotkey_(preferences.loadGlobalPlayHotkey()) {}

void GlobalPlay::configureGlobalKeyboard() {
    globalKeyboard_.onKeyDown = [this](Character key) { performance_.handleKeyDown(key); };
    globalKeyboard_.onKeyUp = [this](Character key) { performance_.handleKeyUp(key); };
    globalKeyboard_.onPanic = [this] { performance_.panic(); };
    connect(&globalKeyboard_, &GlobalKeyboardController::isEnabledChanged, this, [this] {
        performance_.setPlayingUnfocused(globalKeyboard_.isEnabled());
        Q_EMIT enabledChanged();
    });
    connect(&performance_, &PerformanceController::playingStateReset, this, &GlobalPlay::passOnHotkey);
    passOnHotkey();
}

void GlobalPlay::toggleGlobalPlay() {
    globalKeyboard_.setEnabled(!globalKeyboard_.isEnabled());
}

void GlobalPlay::setGlobalPlayBinding(bool isOn) {
    if (isOn != globalPlayBinding()) {
        toggleGlobalPlay();
    }
}

void GlobalPlay::setGlobalPlayHotkey(const std::string& text, std::optional<std::int64_t> keyCode,
                                     HotkeyModifiers modifiers) {
    hotkey_ = {.key = toUtf8(ToggleHotkey::characterOf(text)), .keyCode = keyCode, .modifiers = modifiers};
    preferences_.saveGlobalPlayHotkey(hotkey_);
    isRecording_ = false;
    passOnHotkey();
}

std::string GlobalPlay::globalPlayHotkeyCharacter() const {
    const auto layout = performance_.state().keyboardLayout;
    const auto character =
        hotkey_.keyCode ? PhysicalKeyMapper::character(*hotkey_.keyCode, layout) : std::nullopt;
    return character ? toUtf8(*character) : hotkey_.key;
}

QString GlobalPlay::displayedGlobalPlayHotkey() const {
    return QString::fromStdString(hotkey_.modifiers.displayPrefix(naming_) + hotkeysKeyName());
}

std::string GlobalPlay::hotkeysKeyName() const {
    const auto layout = performance_.state().keyboardLayout;
    // Stored without a key code, it means either of two keys, and is called after the one that everybody has.
    const bool isCaret = ToggleHotkey::characterOf(hotkey_.key) == U'^';
    if (!hotkey_.keyCode) {
        return isCaret ? KeyNames::nameLeftOfOne(layout) : hotkey_.key;
    }
    if (const auto name = KeyNames::name(*hotkey_.keyCode, layout)) {
        return *name;
    }
    // A key without a text is stored with that of the caret key.
    return isCaret ? "Key " + std::to_string(*hotkey_.keyCode) : hotkey_.key;
}

bool GlobalPlay::hotkeyTakesPlayingKey() const {
    const auto layout = performance_.state().keyboardLayout;
    const bool isPlayed =
        hotkey_.keyCode
            ? PhysicalKeyMapper::character(*hotkey_.keyCode, layout).has_value()
            : KeyboardLayout::of(layout).position(ToggleHotkey::characterOf(hotkey_.key)) != nullptr;
    return isPlayed && !hotkey_.modifiers.makesShortcut();
}

void GlobalPlay::setRecordingGlobalPlayHotkey(bool isRecording) {
    if (std::exchange(isRecording_, isRecording) != isRecording) {
        Q_EMIT hotkeyChanged();
    }
}

void GlobalPlay::setApplicationActive(bool isActive) {
    globalKeyboard_.setApplicationActive(isActive);
    if (isActive && globalKeyboard_.isEnabled()) {
        globalKeyboard_.start();
    }
    if (!isActive) {
        // The key that the user types next is meant for somebody else.
        setRecordingGlobalPlayHotkey(false);
    }
}

void GlobalPlay::passOnHotkey() {
    globalKeyboard_.setLayoutKind(performance_.state().keyboardLayout);
    globalKeyboard_.setHotkey(globalPlayHotkeyCharacter(), hotkey_.keyCode, hotkey_.modifiers);
    // By another layout the same key may have another character.
    Q_EMIT hotkeyChanged();
}

} // namespace tavro
