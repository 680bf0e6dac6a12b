#pragma once

namespace tavro::x11 {

/// Ends the wait of another thread in `poll`.
class WakeUp {
public:
    WakeUp();
    ~WakeUp();

    WakeUp(const WakeUp&) = delete;
    WakeUp& operator=(const WakeUp&) = delete;

    /// False when the system had none left.
    [[nodiscard]] bool isThere() const { return descriptor_ >= 0; }

    /// What to wait for; readable once `signal` was called.
    [[nodiscard]] int descriptor() const { return descriptor_; }

    /// Any thread.
    void signal() const;
    /// Makes it wait for the next signal.
    void clear() const;

private:
    int descriptor_;
};

} // namespace tavro::x11
