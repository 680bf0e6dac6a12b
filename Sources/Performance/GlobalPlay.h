#pragma once

#include "KeyboardInput/ToggleHotkey.h"
#include "Performance/GlobalKeyboardController.h"
#include "Performance/PerformanceController.h"
#include "Preferences/AppPreferences.h"

#include <QObject>
#include <QString>

#include <string>

namespace tavro {

/// Joins the system-wide keyboard to the performance: what it plays, how it is turned on and off, and its
/// hotkey. Main thread only.
class GlobalPlay : public QObject {
    Q_OBJECT

public:
    /// All of them must outlive this. Begins with the stored hotkey, which is shown with its modifiers named
    /// that way.
    GlobalPlay(PerformanceController& performance, GlobalKeyboardController& globalKeyboard,
               Preferences& preferences, ModifierNaming naming);

    /// Tells the system-wide keyboard whom it plays, by which layout, and its hotkey. Once, before use.
    void configureGlobalKeyboard();

    void toggleGlobalPlay();

    /// Reads whether Global Play is on; setting another value toggles it.
    [[nodiscard]] bool globalPlayBinding() const { return globalKeyboard_.isEnabled(); }

    void setGlobalPlayBinding(bool isOn);

    /// Another hotkey, as it was recorded. It is stored.
    void setGlobalPlayHotkey(const ToggleHotkey& hotkey);

    /// The hotkey with its position's character on the current layout; where that has none, the recorded one.
    [[nodiscard]] ToggleHotkey globalPlayHotkey() const;

    /// The hotkey as the user reads it: the modifiers, then the name of the key.
    [[nodiscard]] QString displayedGlobalPlayHotkey() const;

    /// Whether the hotkey is a key that would play, and so plays no longer.
    [[nodiscard]] bool hotkeyTakesPlayingKey() const;

    /// Whether the next key in the window becomes the hotkey.
    [[nodiscard]] bool isRecordingGlobalPlayHotkey() const { return isRecording_; }

    void setRecordingGlobalPlayHotkey(bool isRecording);

    /// A window of the program came to the front, or none is there any more.
    void setApplicationActive(bool isActive);

    [[nodiscard]] GlobalKeyboardController& globalKeyboard() const { return globalKeyboard_; }

Q_SIGNALS:
    void enabledChanged();
    /// The hotkey, the way it is shown, or whether one is being recorded.
    void hotkeyChanged();

private:
    void passOnHotkey();
    [[nodiscard]] std::string hotkeysKeyName() const;

    PerformanceController& performance_;
    GlobalKeyboardController& globalKeyboard_;
    Preferences& preferences_;
    ModifierNaming naming_;
    /// As it was recorded.
    ToggleHotkey hotkey_;
    bool isRecording_ = false;
};

} // namespace tavro
