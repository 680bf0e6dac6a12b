#pragma once

#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Linux/X11/Connection.h"
#include "Platform/Linux/X11/TapSession.h"
#include "Platform/Linux/X11/WakeUp.h"
#include "PlatformInterfaces/KeyboardTap.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace tavro::x11 {

/// The thread on which the tap works, apart from the window and its drawing. What is asked of it is done soon
/// after, in the order: switching, then verdicts.
class TapThread {
public:
    /// Null when the display, or what is needed of it, is not there. The client and the guard outlive the
    /// thread.
    [[nodiscard]] static std::unique_ptr<TapThread>
    start(KeyboardTap::Client& client, guard::GuardProcess& guard, const std::string& display);
    /// Lets go of every key and waits for the end of the thread.
    ~TapThread();

    TapThread(const TapThread&) = delete;
    TapThread& operator=(const TapThread&) = delete;

    /// Any thread.
    void setOn(bool isOn);
    /// Any thread.
    void refresh();

private:
    TapThread(std::unique_ptr<Connection> connection, KeyboardTap::Client& client,
              guard::GuardProcess& guard);

    void run();
    /// True when the thread is to end.
    [[nodiscard]] bool obey();
    void waitForWork() const;

    std::unique_ptr<Connection> connection_;
    KeyboardTap::Client& client_;
    TapSession session_;
    WakeUp wakeUp_;
    std::atomic<bool> isOn_ = false;
    std::atomic<bool> isStale_ = false;
    std::atomic<bool> isEnding_ = false;
    std::thread thread_;
};

} // namespace tavro::x11
