#pragma once

#include "Concurrency/MainActor.h"

#include <QObject>

namespace tavro {

/// The main actor over Qt's event loop, with precise timers. To be made on the main thread.
class QtMainActor final : public QObject, public MainActor {
    Q_OBJECT

public:
    void post(Action action) override;
    [[nodiscard]] ScheduledTask after(std::chrono::nanoseconds delay, Action action) override;
    [[nodiscard]] std::chrono::nanoseconds now() const override;
};

} // namespace tavro
