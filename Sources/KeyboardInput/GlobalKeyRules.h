#pragma once

#include "KeyboardInput/PressedKeys.h"
#include "KeyboardInput/ToggleHotkey.h"
#include "PerformanceModel/Character.h"
#include "PerformanceModel/KeyboardLayoutKind.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace tavro {

/// Decides from plain fields what becomes of a key that a tap sees. Knows no tap and no thread: the caller
/// keeps it to one at a time.
class GlobalKeyRules {
public:
    /// What is to be done about an event besides letting it through or not.
    enum class Action {
        none,
        /// The system switched the tap off; it wants to be switched on again.
        enableTap,
        toggle,
        keyDown,
        keyUp,
    };

    struct Decision {
        KeyboardTap::Verdict verdict = KeyboardTap::Verdict::pass;
        Action action = Action::none;
        /// The key that goes down or up; the NUL character for one that has played nothing.
        Character character = noKey;
        /// It was a window's: it is up, or was before it went down again, and what it plays is to be asked of
        /// `PressedKeys::finish`.
        bool isOfWindow = false;

        friend bool operator==(const Decision&, const Decision&) = default;
    };

    KeyboardLayoutKind layoutKind = allKeyboardLayoutKinds.front();
    ToggleHotkey hotkey;
    /// While the program itself is in front its window takes the keys, and the tap none.
    bool isApplicationActive = false;
    /// While the capture is paused every key is everybody's, the hotkey too. Releases still end what was
    /// played.
    bool isPaused = false;
    /// Which keys are down, shared with the other roads on which keys come in. Never null.
    std::shared_ptr<PressedKeys> keys = std::make_shared<PressedKeys>();

    [[nodiscard]] bool isEnabled() const { return isEnabled_; }

    /// Forgets which keys are held through the tap.
    void setEnabled(bool isEnabled);

    void forgetPressedKeys() { keys->forget(PressedKeys::Road::tap); }

    /// Decides, and remembers what the decision rests on: which keys are held, and after the hotkey the new
    /// state. The keys typed right behind the hotkey so follow it already.
    Decision decide(const KeyboardTap::Event& event);

    /// The verdict of `decide`, with nothing remembered.
    [[nodiscard]] KeyboardTap::Verdict verdict(const KeyboardTap::Event& event) const;

    /// Whether a press of this key with these modifiers is the hotkey.
    [[nodiscard]] bool matchesToggleHotkey(std::int64_t keyCode, HotkeyModifiers modifiers) const;

private:
    Decision decideKeyDown(const KeyboardTap::Event& event);
    Decision decideKeyUp(const KeyboardTap::Event& event);
    /// The character to play, when the key is to be played at all.
    [[nodiscard]] std::optional<Character> playedCharacter(const KeyboardTap::Event& event) const;

    /// Whether it is down already, so that its press is no more than a repeat.
    [[nodiscard]] bool isHeld(std::int64_t keyCode) const;

    bool isEnabled_ = false;
};

} // namespace tavro
