#pragma once

#include "KeyboardInput/KeyEventRouter.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tavro {

/// A router whose actions are noted: "down a", "up a", "hotkey", "recorded a 0 15" with the key code and the
/// bits of the modifiers, "interrupted".
class RecordingRouter {
public:
    RecordingRouter() {
        router.onKeyDown = [this](Character key) { calls.push_back("down " + toUtf8(key)); };
        router.onKeyUp = [this](Character key) { calls.push_back("up " + toUtf8(key)); };
        router.onHotkey = [this] { calls.emplace_back("hotkey"); };
        router.onRecordedHotkey = [this](const ToggleHotkey& hotkey) {
            calls.push_back("recorded " + toUtf8(hotkey.character) + " " +
                            std::to_string(hotkey.keyCode.value_or(-1)) + " " +
                            std::to_string(hotkey.modifiers.rawValue()));
        };
        router.onRecordingInterrupted = [this] { calls.emplace_back("interrupted"); };
    }

    RecordingRouter(const RecordingRouter&) = delete;
    RecordingRouter& operator=(const RecordingRouter&) = delete;

    /// Hands the event over and checks that the answer announced before is the one given.
    bool consumes(const KeyEvent& event, const KeyEventRouter::Context& context = {}) {
        const auto announced = router.verdict(event, context);
        const auto verdict = router.handle(event, context);
        if (announced != verdict) {
            calls.emplace_back("another verdict than announced");
        }
        return verdict == KeyEventRouter::Verdict::consume;
    }

    /// The same, and the key is let go again, which is not noted.
    bool consumesTap(const KeyEvent& press, const KeyEventRouter::Context& context = {}) {
        const bool isConsumed = consumes(press, context);
        const auto noted = calls.size();
        auto release = press;
        release.type = KeyEvent::Type::keyUp;
        router.handle(release, context);
        calls.resize(noted);
        return isConsumed;
    }

    KeyEventRouter router;
    std::vector<std::string> calls;
};

inline KeyEvent press(std::int64_t keyCode, HotkeyModifiers modifiers = {},
                      std::optional<Character> typed = std::nullopt) {
    return {KeyEvent::Type::keyDown, keyCode, typed, modifiers, false};
}

inline KeyEvent repeat(std::int64_t keyCode, HotkeyModifiers modifiers = {}) {
    return {KeyEvent::Type::keyDown, keyCode, std::nullopt, modifiers, true};
}

inline KeyEvent release(std::int64_t keyCode, HotkeyModifiers modifiers = {},
                        std::optional<Character> typed = std::nullopt) {
    return {KeyEvent::Type::keyUp, keyCode, typed, modifiers, false};
}

} // namespace tavro
