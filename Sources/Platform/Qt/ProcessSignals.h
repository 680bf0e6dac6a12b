#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tavro::posix {

/// Turns the signals that end or stop a process into calls on the main thread, so that a program can first
/// silence its notes and give the keyboard back. A signal that whoever started the program had ignored stays
/// so. One at a time in a process.
class ProcessSignals {
public:
    /// SIGTERM, SIGINT, SIGHUP and SIGQUIT make one call of `onTermination`. After that the end is on its
    /// way, and the others say the same once more: they are ignored to the end of the process, however late
    /// they come.
    ///
    /// SIGTSTP, the terminal's Ctrl+Z, makes a call of `onStop`, which is followed by `stopNow` when the
    /// program is ready. Empty leaves that signal alone.
    ///
    /// Without the means for it (no file descriptor left) all of them do what they always do.
    explicit ProcessSignals(std::function<void()> onTermination, std::function<void()> onStop = {});
    /// Without a signal before, the next one ends the program at once.
    ~ProcessSignals();
    ProcessSignals(const ProcessSignals&) = delete;
    ProcessSignals& operator=(const ProcessSignals&) = delete;

    /// Stops the process as Ctrl+Z does, and returns when it goes on; at once when nobody could let it go on.
    void stopNow() const;

private:
    void take(char kind) const;

    std::function<void()> onTermination_;
    std::function<void()> onStop_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace tavro::posix
