#pragma once

#include "KeyboardInput/KeyEvent.h"
#include "KeyboardMapping/KeyboardLayoutKind.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
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
    /// While true, the next key is reported by `onRecordedHotkey` instead of being played. The caller ends
    /// it.
    bool isRecordingHotkey = false;
    std::function<void(std::string text, std::int64_t keyCode, HotkeyModifiers modifiers)> onRecordedHotkey;
    std::function<void()> onHotkey;

    /// Acts on the event and tells whether it goes on.
    Verdict handle(const KeyEvent& event, const Context& context);

    /// What `handle` would answer, without acting.
    [[nodiscard]] Verdict verdict(const KeyEvent& event, const Context& context) const;

    /// Forgets which keys are held: their releases are not going to be seen.
    void forgetHeldKeys() {
        keysDown_.clear();
        heldKeys_.clear();
    }

    /// The key as a hotkey's text: "^" for the two caret keys, else the layout's character at this position,
    /// else what the key types; nothing when none of them gives one character.
    [[nodiscard]] std::optional<Character> hotkeyString(const KeyEvent& event) const;

    [[nodiscard]] bool isToggleHotkey(const KeyEvent& event) const;

    /// The layout's character at this position, else what the key types.
    [[nodiscard]] std::optional<Character> playableCharacter(const KeyEvent& event) const;

private:
    enum class Meaning { foreign, recorded, hotkey, swallowed, playing };

    [[nodiscard]] Meaning meaning(const KeyEvent& event, const Context& context) const;
    void handleKeyDown(const KeyEvent& event, Meaning meaning);
    void handleKeyUp(const KeyEvent& event, Meaning meaning);

    /// Every key that is down. A press of one of them is an autorepeat, marked as such or not: not every
    /// system marks it.
    std::set<std::int64_t> keysDown_;
    /// The keys whose press was played, by key code. Their releases are played whatever has happened in
    /// between (a modifier held, a text field opened, another layout), or their notes would never end.
    std::map<std::int64_t, Character> heldKeys_;
};

} // namespace tavro
