#pragma once

#include "KeyboardInput/PressedKeys.h"
#include "KeyboardInput/ToggleHotkey.h"
#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PlatformInterfaces/HeldKeyNotices.h"
#include "PlatformInterfaces/KeyEvent.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace tavro {

/// Decides what a key event in the window means: something to play, the hotkey, a hotkey being recorded, or
/// nothing of ours. Holds no window and no platform event, so that every rule is tried without them.
class KeyEventRouter final : public HeldKeyNotices {
public:
    /// Whether the event goes on to the window or ends here.
    enum class Verdict { pass, consume };

    /// What the window was doing when the event came.
    struct Context {
        /// The event belongs to another window or to an open popup.
        bool isForeignWindow = false;
        /// A text field has the keyboard.
        bool isEditingText = false;
    };

    /// The playable character of a press and of its release; both unset actions are skipped.
    std::function<void(Character)> onKeyDown;
    std::function<void(Character)> onKeyUp;
    ToggleHotkey hotkey;
    KeyboardLayoutKind layoutKind = allKeyboardLayoutKinds.front();
    /// While true, the next key is reported by `onRecordedHotkey` instead of being played, whichever it is: a
    /// key that has no text comes with the caret. The caller ends it.
    bool isRecordingHotkey = false;
    std::function<void(const ToggleHotkey&)> onRecordedHotkey;
    /// Something else has got the keys while a hotkey was being recorded: a menu, a dialog or a text field in
    /// the window, or another window.
    std::function<void()> onRecordingInterrupted;
    std::function<void()> onHotkey;
    /// True when the window's keys come here, false when they no longer do: the window was left or lost the
    /// keyboard. May be called again with the same value.
    std::function<void(bool isFocused)> onFocusChanged;
    /// Called before anything is done about a key: what came in earlier by another road is to be done first.
    std::function<void()> catchUp;
    /// Which keys are down, shared with the other roads on which keys come in. Never null.
    std::shared_ptr<PressedKeys> keys = std::make_shared<PressedKeys>();

    /// Acts on the event and tells whether it goes on.
    Verdict handle(const KeyEvent& event, const Context& context);

    /// What `handle` would answer, without acting.
    [[nodiscard]] Verdict verdict(const KeyEvent& event, const Context& context) const;

    /// Acts on a key that the window has not seen yet, when it does no more than play. False when it is to go
    /// the window's way, where it comes again; nothing has been done. Only keys of the playing area are
    /// played so, and no hotkey.
    [[nodiscard]] bool handleDirectly(const KeyEvent& event, const Context& context);

    /// The window has the keyboard, or no longer has it: then nothing is recorded any more, and the keys that
    /// are held may go up unseen.
    void setFocused(bool isFocused);

    /// Something in the window takes the keys that would be recorded.
    void interruptRecording() const;

    /// It ends, or as soon as it has come when its press is still on its way here; the event that tells the
    /// window the same, if there is one, ends nothing more.
    void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time) override;

    /// Silent until it is pressed again.
    void keepSilent(std::int64_t keyCode, std::uint32_t time) override;

    [[nodiscard]] bool isAwaited(std::int64_t keyCode) const override { return keys->isDown(keyCode); }

    /// The key as a hotkey's text: "^" for the two caret keys, else the layout's character at this position,
    /// else what the key types; nothing when none of them gives one character.
    [[nodiscard]] std::optional<Character> hotkeyString(const KeyEvent& event) const;

    [[nodiscard]] bool isToggleHotkey(const KeyEvent& event) const;

    /// The layout's character at this position, else what the key types.
    [[nodiscard]] std::optional<Character> playableCharacter(const KeyEvent& event) const;

private:
    enum class Meaning { foreign, recorded, hotkey, swallowed, playing };

    void doEarlierOnes() const;
    [[nodiscard]] Meaning meaning(const KeyEvent& event, const Context& context) const;
    /// False for a key that is down already, and for a repeat that its own end has overtaken.
    [[nodiscard]] bool startsPress(const KeyEvent& event) const;
    void handleKeyDown(const KeyEvent& event, Meaning meaning);
    void handleKeyUp(const KeyEvent& event, Meaning meaning);
    void release(std::optional<Character> character) const;
};

} // namespace tavro
