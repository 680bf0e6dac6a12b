#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>

#include <functional>
#include <optional>

namespace tavro {

/// The application's event loop in a test.
class EventLoop {
public:
    EventLoop() = delete;

    /// Runs until the condition holds. Gives up after a minute, with a failure.
    static void runUntil(const std::function<bool()>& condition) {
        QTimer alarm;
        alarm.setSingleShot(true);
        alarm.start(60000);
        // What blocks the loop wakes up often enough to look at the condition.
        QTimer pulse;
        pulse.start(5);
        while (!condition() && alarm.isActive()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        EXPECT_TRUE(condition()) << "gave up waiting";
    }
};

} // namespace tavro
