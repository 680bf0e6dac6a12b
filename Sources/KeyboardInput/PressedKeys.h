#pragma once

#include "KeyboardInput/KeyTimes.h"
#include "PerformanceModel/Character.h"

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>

namespace tavro {

/// The one place that knows which keys are down, by which road each came in and what it plays. Whichever road
/// sees a release, the key ends, and it ends once. Any thread; holds no lock while anybody is called.
class PressedKeys {
public:
    /// How a press came in.
    enum class Road {
        /// To a window of the program, with or without the toolkit in between.
        window,
        /// Through the tap, while another application was in front.
        tap,
    };

    /// Who saw a key go up.
    enum class Witness {
        /// A window of the program, to which the release was sent.
        window,
        /// The window system, whoever has the keyboard. What it tells comes in the order of the window's
        /// keys.
        windowSystem,
        /// The tap.
        tap,
    };

    /// Tells one press from all others; 0 is none.
    using Serial = std::uint64_t;

    struct Press {
        std::int64_t keyCode = 0;
        Road road = Road::window;
        /// What it plays; nothing for a key that is only to be known as down.
        std::optional<Character> character;
        /// Milliseconds of the window system's clock, which may run over; 0 where it has none.
        std::uint32_t time = 0;
    };

    struct Pressed {
        Serial serial = 0;
        /// What was still to be ended of an earlier press, before this one is played.
        std::optional<Character> ended;
        /// The key is up already. What it plays is to be ended at once.
        bool isOver = false;
    };

    struct Release {
        /// The key was known to be down, or its release has been seen already by another witness.
        bool isKnown = false;
        /// What is to be ended now.
        std::optional<Character> character;
    };

    struct Held {
        Serial serial = 0;
        Road road = Road::window;
        std::optional<Character> character;
        std::uint32_t time = 0;
    };

    [[nodiscard]] bool isDown(std::int64_t keyCode) const;

    /// Nothing for a key that is up.
    [[nodiscard]] std::optional<Held> find(std::int64_t keyCode) const;

    /// Whether what comes from the keyboard at this time, of the window system's clock or 0, is a press of
    /// its own and no repeat. It may be late: behind later events of the same key, told by others.
    [[nodiscard]] bool startsPress(std::int64_t keyCode, std::uint32_t time) const;

    /// A key went down. Replaces what was known of it: who may have a repeat before him asks first. What came
    /// to a window so late that the key is up already, or down anew, does not count as down.
    Pressed press(const Press& press);

    /// A press of the tap's is being played. Until then nobody but the tap ends it, so that no note begins
    /// behind its own end.
    void markPlayed(std::int64_t keyCode, Serial serial);

    /// The key was seen going up, at a time of the window system's clock or 0. What is told of another road's
    /// key so late that it has been pressed again ends nothing.
    Release release(std::int64_t keyCode, Witness seenBy, std::uint32_t time = 0);

    /// The tap saw a window's key go up, at a time of the window system's clock or 0. It is up from now on,
    /// and its next press is one, but what it plays is for the windows' thread to end, with `finish`. False
    /// for a key that is not a window's, and for what is told so late that it has been pressed again.
    bool releaseLater(std::int64_t keyCode, std::uint32_t time);

    /// The same by a press that the tap saw later than the one that is down: in between the key went up.
    /// False where there is no clock, since it may be the same press.
    bool releaseByNextPress(std::int64_t keyCode, std::uint32_t time);

    /// What is still to be ended of a key that the tap saw going up; once, and nothing when another witness
    /// has told the windows' thread meanwhile.
    std::optional<Character> finish(std::int64_t keyCode);

    /// A key whose press is still on its way to a window or through the toolkit is up already; nobody else
    /// will tell. Nothing where there is no clock: the time is 0.
    void releaseAhead(std::int64_t keyCode, std::uint32_t time);

    /// The releases of this road's keys will not be seen, or mean nothing any more.
    void forget(Road road);

    /// The witness sees releases, or no longer does, while no window of the program has the keyboard.
    void setWatching(Witness witness, bool isWatching);

    /// The windows have lost the keyboard: when nobody watches, their keys are forgotten.
    void loseKeyboard();

private:
    struct Entry {
        Serial serial = 0;
        Road road = Road::window;
        std::optional<Character> character;
        std::uint32_t time = 0;
        bool isPlayed = false;
    };

    [[nodiscard]] static bool isReleaseOf(const Entry& entry, Witness seenBy, std::uint32_t time);
    void forgetLocked(Road road);
    std::optional<Character> finishLocked(std::int64_t keyCode);
    Release end(std::map<std::int64_t, Entry>::iterator entry, Witness seenBy);
    void addRelease(std::int64_t keyCode, std::uint32_t time);

    mutable std::mutex mutex_;
    Serial lastSerial_ = 0;
    std::map<std::int64_t, Entry> entries_;
    /// The window's keys that others have seen go up: the window's own report of it is still to come, or not.
    std::set<std::int64_t> endedElsewhere_;
    std::map<std::int64_t, KeyTimes> times_;
    /// The window's keys that the tap has seen go up and that still sound.
    std::map<std::int64_t, std::optional<Character>> unfinished_;
    std::set<Witness> watching_;
};

} // namespace tavro
