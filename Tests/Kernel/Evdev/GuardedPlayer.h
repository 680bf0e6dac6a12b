#pragma once

#include "ChildProcess.h"

#include <filesystem>
#include <string>
#include <vector>

#include <sys/types.h>

namespace tavro::proof {

/// A process that plays the keys of the session on the synthesizer, if there is one, as latched chords, and
/// has a guard. It is to be made while there is one thread.
class GuardedPlayer {
public:
    static constexpr auto mainThread = "main";
    static constexpr auto tapThread = "tavro-tap";

    GuardedPlayer();

    void signal(int signal) const;

    /// Sends the signal of a terminal's Ctrl+Z, and returns when it has stopped itself.
    void stopInOrder() const;

    /// Waits for its end. The exit status, or the negative number of the signal that ended it.
    int waitForEnd();

    /// Lets one of its threads do nothing until `goOn`.
    void hang(const std::string& thread) const;
    void goOn() const;

    void signalGuard(int signal);

    /// The same, with an end or a stop, and returns when there is another guard.
    void replaceGuard(int signal);

private:
    /// Their folders under /proc.
    [[nodiscard]] std::vector<std::filesystem::path> threads() const;
    [[nodiscard]] pid_t nextGuard(pid_t otherThan) const;

    ChildProcess process_;
    pid_t guard_;
};

} // namespace tavro::proof
