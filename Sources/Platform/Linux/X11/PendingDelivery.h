#pragma once

#include <QObject>

#include <functional>
#include <utility>

namespace tavro::x11 {

/// Tells whether Qt may still be delivering something that it was handed. Main thread only.
class PendingDelivery final : public QObject {
public:
    /// The function is called each time that everything has arrived; none need be given.
    explicit PendingDelivery(std::function<void()> onArrival = {}) : onArrival_(std::move(onArrival)) {}

    /// Qt is being handed an event of the window system.
    void begin();

    /// False once that event, and everything that was posted while it was delivered, has arrived.
    [[nodiscard]] bool isUnderWay() const { return isUnderWay_; }

    bool event(QEvent* event) override;

private:
    std::function<void()> onArrival_;
    bool isUnderWay_ = false;
};

} // namespace tavro::x11
