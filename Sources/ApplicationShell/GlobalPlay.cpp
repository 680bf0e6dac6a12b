#include "ApplicationShell/GlobalPlay.h"

#include "KeyboardInput/ToggleHotkey.h"
#include "KeyboardMapping/PhysicalKeyMapper.h"

#include <utility>

namespace tavro {

GlobalPlay::GlobalPlay(PerformanceController& performance, GlobalKeyboardController& globalKeyboard,
                       ModifierNaming naming)
    : performance_(performance), globalKeyboard_(globalKeyboard), naming_(naming) {}

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
    text_ = toUtf8(ToggleHotkey::characterOf(text));
    keyCode_ = keyCode;
    modifiers_ = modifiers;
    isRecording_ = false;
    passOnHotkey();
}

std::string GlobalPlay::globalPlayHotkeyCharacter() const {
    const auto layout = performance_.state().keyboardLayout;
    const auto character = keyCode_ ? PhysicalKeyMapper::character(*keyCode_, layout) : std::nullopt;
    return character ? toUtf8(*character) : text_;
}

QString GlobalPlay::displayedGlobalPlayHotkey() const {
    return QString::fromStdString(modifiers_.displayPrefix(naming_) + globalPlayHotkeyCharacter());
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
    globalKeyboard_.setHotkey(globalPlayHotkeyCharacter(), keyCode_, modifiers_);
    // By another layout the same key may have another character.
    Q_EMIT hotkeyChanged();
}

} // namespace tavro
