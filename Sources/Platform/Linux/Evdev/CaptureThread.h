#pragma once

#include "Platform/Linux/Evdev/KeyboardDevices.h"
#include "Platform/Linux/Evdev/SwallowedKeys.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Posix/FileDescriptor.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace tavro::evdev {

/// The thread of a tap. It owns the keyboards and is the only caller of the client. Its operations may be
/// called on any one other thread, and return without waiting for it.
class CaptureThread {
public:
    /// Starts it, with no keyboard opened. Throws std::system_error when the system refuses a thread.
    /// A guard, if there is one, gives the keyboards back when this thread does not answer.
    CaptureThread(KeyboardTap::Client& client, InputDevices devices, guard::GuardProcess* guard);

    /// Waits for its end; the client is not called afterwards.
    ~CaptureThread();

    CaptureThread(const CaptureThread&) = delete;
    CaptureThread& operator=(const CaptureThread&) = delete;

    /// Opens the keyboards, or gives them back and closes them.
    void enable(bool isOn);

    /// Lets it ask the client anew.
    void updateVerdicts();

private:
    void wake() const;
    void run();
    /// Does what was ordered from outside.
    void obey();
    void wait(std::optional<std::chrono::microseconds> longest) const;
    void takeEvents();
    void showToGuard();
    /// To the guard. False when that has given the keyboards back meanwhile, with which the tap has ended.
    [[nodiscard]] bool showThatItLives();
    void close();
    void end(KeyboardTap::End reason);
    std::optional<KeyboardTap::Verdict> tell(const KeyBalance::Change& change);

    KeyboardTap::Client& client_;
    const InputDevices devices_;
    guard::GuardProcess* const guard_;
    posix::FileDescriptor wakeUp_;
    std::atomic<bool> isOn_ = false;
    std::atomic<bool> isStopping_ = false;

    // What follows is used by the thread alone.
    std::unique_ptr<KeyboardDevices> keyboards_;
    SwallowedKeys swallowed_;
    KeyBalance::Tell tell_;
    /// An end by itself stays one until the tap is made anew.
    bool hasEnded_ = false;

    std::thread thread_;
};

} // namespace tavro::evdev
