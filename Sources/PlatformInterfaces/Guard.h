#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace tavro {

/// A process of its own that acts in place of this one when it has died without a farewell, was stopped or
/// hangs: it silences the receivers and gives the keyboard back. An adapter for each platform that needs one.
/// Main thread only.
class Guard {
public:
    /// What it has done in place of this program.
    struct Deeds {
        bool gaveKeyboardBack = false;
        bool silenced = false;

        friend bool operator==(const Deeds&, const Deeds&) = default;
    };

    /// How often a thread that is waited for shows that it lives.
    static constexpr std::chrono::milliseconds beatInterval{150};

    Guard() = default;
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    virtual ~Guard() = default;

    /// Those whom it would silence, in the words of `MidiSystem::receivers`, in place of those told before.
    virtual void entrustReceivers(std::vector<std::string> receivers) = 0;

    /// There are notes that this process could not end: the receivers are to be silenced at its end, however
    /// that comes.
    virtual void withholdFarewell() = 0;

    /// Whether it is to act when the beats stay away. It acts at the end of this process in any case.
    virtual void expectBeats(bool expects) = 0;

    /// The main thread lives. Returns what the guard has done since this was last called.
    [[nodiscard]] virtual Deeds beat() = 0;
};

} // namespace tavro
