#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

namespace tavro::posix {

/// Turns SIGTERM, SIGINT and SIGHUP into a call on the main thread, so that a program ended from outside can
/// still silence its notes. One at a time in a process. After such a signal the end is on its way and the
/// others say the same once more: they are ignored to the end of the process, however late they come.
class TerminationSignals {
public:
    /// Without the means for it (no file descriptor left) the signals keep ending the program at once.
    explicit TerminationSignals(std::function<void()> onTermination);
    /// Without a signal before, the next one ends the program at once.
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

} // namespace tavro::posix
