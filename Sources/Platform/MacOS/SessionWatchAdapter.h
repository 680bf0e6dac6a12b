#pragma once

#include "PlatformInterfaces/SessionWatch.h"

#include <memory>

namespace tavro::macos {

/// Follows the switching between users and the lock screen.
class SessionWatchAdapter final : public SessionWatch {
public:
    SessionWatchAdapter();
    ~SessionWatchAdapter() override;

    void start(Handler handler) override;

private:
    struct Observers;

    void tell();

    Handler handler_;
    bool isActive_ = true;
    bool isLocked_ = false;
    bool isInFront_ = true;
    std::unique_ptr<Observers> observers_;
};

} // namespace tavro::macos
