#include "Platform/Qt/QtMainActor.h"

#include <QMetaObject>
#include <QTimer>

#include <algorithm>

#include <limits>
#include <memory>
#include <utility>

namespace tavro {

namespace {

int timerMilliseconds(std::chrono::nanoseconds delay) {
    // A timer counts whole milliseconds; rounding down would run the work before its time.
    const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(delay).count();
    return static_cast<int>(
        std::clamp<decltype(milliseconds)>(milliseconds, 0, std::numeric_limits<int>::max()));
}

} // namespace

void QtMainActor::post(Action action) {
    QMetaObject::invokeMethod(this, std::move(action), Qt::QueuedConnection);
}

ScheduledTask QtMainActor::after(std::chrono::nanoseconds delay, Action action) {
    // The work may drop its own handle while it runs, so the timer must not be destroyed on the spot.
    const std::shared_ptr<QTimer> timer(new QTimer, [](QTimer* dropped) {
        dropped->stop();
        dropped->deleteLater();
    });
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer.get(), &QTimer::timeout, this, std::move(action));
    timer->start(timerMilliseconds(delay));
    return ScheduledTask(timer);
}

std::chrono::nanoseconds QtMainActor::now() const {
    return std::chrono::steady_clock::now().time_since_epoch();
}

} // namespace tavro
