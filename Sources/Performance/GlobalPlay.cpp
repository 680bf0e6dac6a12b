#include "Performance/GlobalPlay.h"

#include "KeyboardInput/KeyNames.h"
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

void GlobalPlay::setGlobalPlayHotkey(const ToggleHotkey& hotkey) {
    hotkey_ = hotkey;
    preferences_.saveGlobalPlayHotkey(hotkey_);
    isRecording_ = false;
    passOnHotkey();
}

ToggleHotkey GlobalPlay::globalPlayHotkey() const {
    auto hotkey = hotkey_;
    if (hotkey.keyCode) {
        const auto layout = performance_.state().keyboardLayout;
        hotkey.character = PhysicalKeyMapper::character(*hotkey.keyCode, layout).value_or(hotkey.character);
    }
    return hotkey;
}

QString GlobalPlay::displayedGlobalPlayHotkey() const {
    return QString::fromStdString(hotkey_.modifiers.displayPrefix(naming_) + hotkeysKeyName());
}

std::string GlobalPlay::hotkeysKeyName() const {
    const auto layout = performance_.state().keyboardLayout;
    // Stored without a key code, it means either of two keys, and is called after the one that everybody has.
    const bool isCaret = hotkey_.character == U'^';
    if (!hotkey_.keyCode) {
        return isCaret ? KeyNames::nameLeftOfOne(layout) : toUtf8(hotkey_.character);
    }
    if (const auto name = KeyNames::name(*hotkey_.keyCode, layout)) {
        return *name;
    }
    // A key without a text is stored with that of the caret key.
    return isCaret ? "Key " + std::to_string(*hotkey_.keyCode) : toUtf8(hotkey_.character);
}

bool GlobalPlay::hotkeyTakesPlayingKey() const {
    const auto layout = performance_.state().keyboardLayout;
    const bool isPlayed = hotkey_.keyCode ? PhysicalKeyMapper::character(*hotkey_.keyCode, layout).has_value()
                                          : KeyboardLayout::of(layout).position(hotkey_.character) != nullptr;
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
    globalKeyboard_.setHotkey(globalPlayHotkey());
    // By another layout the same key may have another character.
    Q_EMIT hotkeyChanged();
}

} // namespace tavro
