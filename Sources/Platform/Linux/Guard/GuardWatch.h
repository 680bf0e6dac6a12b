#pragma once

#include "Platform/Linux/Guard/GuardOrders.h"

#include <chrono>
#include <optional>
#include <string_view>

namespace tavro::guard {

/// The judgement of the guard: what is to be done in place of the program, and when. Knows the time only from
/// its callers, who hand over all messages that have come before they ask what is due.
class GuardWatch {
public:
    using Time = std::chrono::steady_clock::time_point;

    /// How long the threads may stay away before the keyboard is given back: the tap's, which has nothing
    /// else to do, and the main one, which draws. Within a second it is the user's again, and a grab that is
    /// taken again costs little.
    static constexpr std::chrono::milliseconds tapPatience{700};
    static constexpr std::chrono::milliseconds mainPatience{900};
    /// How long the main thread may stay away before the notes are silenced: more than a second, for notes
    /// that end without need are heard.
    static constexpr std::chrono::milliseconds notePatience{1200};

    struct Due {
        /// The keys are to be free again: the grabs ended, the repeats restored.
        bool givesKeyboardBack = false;
        bool restoresRepeats = false;
        bool silences = false;

        friend bool operator==(const Due&, const Due&) = default;
    };

    /// Takes one message of the program. Returns what is due by it.
    Due take(std::string_view message, Time now);

    /// What is due because of the time alone; each thing once, until beats have come again.
    Due judge(Time now);

    /// When to judge again, whatever comes meanwhile; nothing while nobody is waited for.
    [[nodiscard]] std::optional<Time> nextJudgement() const;

    /// What is due when the program has ended.
    [[nodiscard]] Due atEnd() const;

    [[nodiscard]] const GuardOrders& orders() const { return orders_; }

private:
    void follow(const GuardOrders& orders, Time now);
    /// When the keyboard, or the notes, can no longer wait for beats; nothing while nobody is waited for.
    [[nodiscard]] std::optional<Time> keyboardDeadline() const;
    [[nodiscard]] std::optional<Time> noteDeadline() const;

    GuardOrders orders_;
    /// Of the threads that are waited for.
    std::optional<Time> mainBeat_;
    std::optional<Time> tapBeat_;
    bool hasGivenBack_ = false;
    bool hasSilenced_ = false;
    bool hasFarewell_ = false;
};

} // namespace tavro::guard
