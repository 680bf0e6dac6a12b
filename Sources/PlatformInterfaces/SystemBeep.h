#pragma once

namespace tavro {

/// The sound by which the system says that something could not be done. One adapter per platform.
class SystemBeep {
public:
    SystemBeep() = default;
    SystemBeep(const SystemBeep&) = delete;
    SystemBeep& operator=(const SystemBeep&) = delete;
    virtual ~SystemBeep() = default;

    /// Returns at once. Silent where the system has no such sound. Main thread only.
    virtual void beep() = 0;
};

} // namespace tavro
