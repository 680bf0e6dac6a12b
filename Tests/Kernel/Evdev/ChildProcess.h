#pragma once

#include <functional>

#include <sys/types.h>

namespace tavro::proof {

/// A process that does one thing and is ended with this. It is to be made while there is one thread.
class ChildProcess {
public:
    /// What it returns is the exit status.
    explicit ChildProcess(const std::function<int()>& work);
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    [[nodiscard]] pid_t id() const { return process_; }

    /// Without a warning.
    void kill();

    /// Waits for its end. The exit status, or the negative number of the signal that ended it.
    int wait();

private:
    pid_t process_;
};

} // namespace tavro::proof
