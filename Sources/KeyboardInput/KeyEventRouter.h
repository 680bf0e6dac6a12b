#pragma once

#include "KeyboardInput/PressedKeys.h"
#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PlatformInterfaces/KeyEvent.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace tavro {

/// Decides what a key event in the window means: something to play, the hotkey, a hotkey being recorded, or
/// nothing of ours. Holds no window and no platform event, so that every rule is tried without them.
class KeyEventRouter {
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
    /// The hotkey's key as text; only its last character counts.
    std::string hotkey = "^";
    /// The hotkey's physical key; when present, it alone decides.
    std::optional<std::int64_t> hotkeyKeyCode;
    HotkeyModifiers hotkeyModifiers;
    KeyboardLayoutKind layoutKind = allKeyboardLayoutKinds.front();
    /// While true, the next key is reported by `onRecordedHotkey` instead of being played, whichever it is: a
    /// key that has no text comes with an empty one. The caller ends it.
    bool isRecordingHotkey = false;
    std::function<void(std::string text, std::int64_t keyCode, HotkeyModifiers modifiers)> onRecordedHotkey;
    std::function<void()> onHotkey;
    /// Called before anything is done about a key: what came in earlier by another road is to be done first.
    std::function<void()> catchUp;
    /// Which keys are down, shared with the other roads on which keys come in. Never null.
    std::shared_ptr<PressedKeys> keys = std::make_shared<PressedKeys>();

    /// Acts on the event and tells whether it goes on.
    Verdict handle(const KeyEvent& event, const Context& context);

    /// What `handle` would answer, without acting.
    [[nodiscard]] Verdict verdict(const KeyEvent& event, const Context& context) const;

    /// The window system saw a key of the windows go up, whoever has the keyboard. It ends, or as soon as it
    /// has come when its press is still on its way here; the event that tells the window the same, if there
    /// is one, ends nothing more. The time is that of `KeyEvent`.
    void handleReleaseElsewhere(std::int64_t keyCode, std::uint32_t time);

    /// The keyboard came back with a key down whose press went to others: silent until it is pressed again.
    /// The time is one at which it is known to be down, or 0.
    void keepSilent(std::int64_t keyCode, std::uint32_t time);

    /// Forgets which keys are held: their releases are not going to be seen.
    void forgetHeldKeys() { keys->forget(PressedKeys::Road::window); }

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
