#pragma once

#include "PlatformInterfaces/SessionWatch.h"

#include <utility>

namespace tavro::headless {

/// A session that is always in front, unless its handler is called to say otherwise.
class SessionWatchAdapter final : public SessionWatch {
public:
    /// Empty until the watch was started.
    Handler handler;

    void start(Handler newHandler) override { handler = std::move(newHandler); }
};

} // namespace tavro::headless
