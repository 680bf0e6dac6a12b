#pragma once

#include "Platform/Linux/Guard/GuardOrders.h"
#include "Platform/Posix/FileDescriptor.h"
#include "PlatformInterfaces/Guard.h"

#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tavro::guard {

/// The guard as a child process in a session of its own, which a terminal's signals do not reach. One that
/// has been ended or does not answer is replaced. Nothing here waits for it, except for a moment at the end.
///
/// Any thread, besides what the interface says.
class GuardProcess final : public Guard {
public:
    /// The path of the guard's program, and the X display on which it is to help; empty where there is none.
    /// Starts it; when there can be none, that is said once on the standard error output.
    GuardProcess(std::string program, std::string display);

    /// Says farewell: nothing is done in place of a program that ended in order.
    ~GuardProcess() override;

    void entrustReceivers(std::vector<std::string> receivers) override;
    void withholdFarewell() override;
    void expectBeats(bool expects) override;
    [[nodiscard]] Deeds beat() override;

    /// The X key codes that are to repeat again when the program has ended.
    void entrustRepeats(const std::vector<unsigned>& keys);

    /// Has it restore those now, as somebody who can no longer do it himself, and waits until it is done:
    /// done later it would undo what the next tap turns off. A guard that does not do it in half a second is
    /// replaced by one that does.
    void restoreRepeats();

    /// Any resource of the X connection that grabs keys; 0 for none.
    void entrustConnection(std::uint32_t resource);

    /// This program's files of the keyboards that it may grab, and of the copies that it types on.
    void entrustDevices(const std::vector<int>& keyboards, const std::vector<int>& copies);

    /// Whether the guard is to act when the beats of the tap's thread stay away.
    void expectTapBeats(bool expects);

    /// The tap's thread lives. May be called at every turn: it is passed on from time to time. True when the
    /// guard has given the keyboard back since this was last called.
    [[nodiscard]] bool tapBeat();

    /// Becomes readable when the guard tells something. Changes when it is replaced; -1 without one.
    [[nodiscard]] int descriptor() const;

private:
    using Clock = std::chrono::steady_clock;

    template <typename Change>
    void change(Change change);
    void keepAlive();
    [[nodiscard]] bool restoresRepeatsInTime();
    void start();
    void stop(std::chrono::milliseconds patience);
    void restart();
    void tellOrders();
    [[nodiscard]] bool tell(std::string_view text);
    void listen();

    const std::string program_;
    const std::string display_;
    mutable std::mutex mutex_;
    GuardOrders orders_;
    posix::FileDescriptor socket_;
    pid_t process_ = -1;
    bool saysFarewell_ = true;
    bool areOrdersTold_ = false;
    /// The beat that is still to be answered.
    std::optional<Clock::time_point> unansweredSince_;
    Clock::time_point lastStart_;
    Clock::time_point lastTapBeat_;
    bool hasComplained_ = false;
    Deeds deeds_;
    bool isKeyboardGone_ = false;
    bool areRepeatsRestored_ = false;
};

} // namespace tavro::guard
