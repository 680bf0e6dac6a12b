#pragma once

#include "PlatformInterfaces/HotkeyModifiers.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tavro {

/// Sees the keys of the whole login session, whichever application is in front, and keeps those from the
/// front application that its client wants for itself. One adapter per way to do that. What is to be kept is
/// the client's decision alone; an adapter only arranges that it can be obeyed.
///
/// Operations are called on the main thread.
class KeyboardTap {
public:
    enum class Verdict { pass, swallow };

    struct Event {
        enum class Type {
            keyDown,
            keyUp,
            /// The system has switched the tap off, because it was slow or because the user wished so.
            disabledByTimeout,
            disabledByUserInput,
            other,
        };

        Type type = Type::other;
        /// The physical position, as the Mac's virtual key code. Keys that only modify others are not
        /// reported.
        std::int64_t keyCode = 0;
        HotkeyModifiers modifiers{};
        /// A press that the keyboard repeats while the key is down.
        bool isAutorepeat = false;
        /// Milliseconds of the window system's clock, the same as that of the windows' keys; 0 where the tap
        /// has none.
        std::uint32_t time = 0;

        friend bool operator==(const Event&, const Event&) = default;
    };

    /// Why a tap came to its end by itself.
    enum class End {
        /// The user held both Shift keys and Escape: the way out that no state of the program can block.
        emergencyExit,
        /// The display server or the devices are gone.
        lost,
    };

    /// Who decides. Every function may be called on any thread, one call at a time, and returns at once.
    class Client {
    public:
        Client() = default;
        Client(const Client&) = delete;
        Client& operator=(const Client&) = delete;

        /// Acts on the event and tells what becomes of it. Called for every press, repeat and release of
        /// which the tap knows; for keys that `verdict` lets pass it need not know any.
        virtual Verdict handle(const Event& event) = 0;

        /// What `handle` would answer now, without acting.
        [[nodiscard]] virtual Verdict verdict(const Event& event) const = 0;

        /// Whether the client waits for the key's release although its press came in another way.
        [[nodiscard]] virtual bool isDown(std::int64_t /*keyCode*/) const { return false; }

        /// The presses, of those that `verdict` wants swallowed, that another program has reserved for
        /// itself, so that the tap does not get them; empty when it gets all. Replaces what was told before.
        virtual void reportTaken(std::vector<Event> presses) = 0;

        /// The tap has let go of every key and sees none any more. It is still to be disposed.
        virtual void tapEnded(End end) = 0;

    protected:
        ~Client() = default;
    };

    KeyboardTap() = default;
    KeyboardTap(const KeyboardTap&) = delete;
    KeyboardTap& operator=(const KeyboardTap&) = delete;
    virtual ~KeyboardTap() = default;

    /// Whether the user lets this program see the keys of others. With `prompts`, the system may ask the
    /// user about it, which does not wait for the answer.
    [[nodiscard]] virtual bool isTrusted(bool prompts) = 0;

    /// Makes the tap, switched off, for a client that outlives it or disposes it. False when it cannot be
    /// made. There is one tap at a time.
    [[nodiscard]] virtual bool create(Client& client) = 0;

    /// Switches a made tap on or off. Off, it takes no key from anybody.
    virtual void enable(bool isOn) = 0;

    /// The client's verdicts may have changed: settings, or who is in front. May be called without a tap.
    virtual void updateVerdicts() = 0;

    /// Takes the tap away; every key is the front application's again. Once this returns, the client is not
    /// called any more. Without a tap it does nothing.
    virtual void dispose() = 0;

    /// How a user who is not trusted can change that, for the settings; empty when the system itself tells.
    [[nodiscard]] virtual std::string adviceOnTrust() const { return {}; }
};

} // namespace tavro
