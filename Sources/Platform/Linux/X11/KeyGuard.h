#pragma once

#include "Platform/Linux/X11/Repeat/KeySet.h"

#include <string>

#include <sys/types.h>

namespace tavro::x11 {

/// A process of its own that lets keys repeat again when this program has come to its end in a way that left
/// it no time to do so. One thread.
class KeyGuard {
public:
    /// The path of the guard's program, and the display it is to help on; empty for the environment's.
    KeyGuard(std::string program, std::string display);
    ~KeyGuard();

    KeyGuard(const KeyGuard&) = delete;
    KeyGuard& operator=(const KeyGuard&) = delete;

    /// The keys that are to repeat again after a sudden end, in place of those told before. The first that
    /// are told start the process. When there can be none, that is said once on the standard error output.
    void entrust(const KeySet& keys);

    /// Ends the guard and waits for it; it helps the keys that are still entrusted to it. So does the end of
    /// this object.
    void end();

private:
    [[nodiscard]] bool start();
    [[nodiscard]] bool tell(const KeySet& keys) const;

    std::string program_;
    std::string display_;
    /// This program's end of the guard's standard input; -1 without a guard.
    int input_ = -1;
    pid_t process_ = -1;
    bool hasComplained_ = false;
};

} // namespace tavro::x11
