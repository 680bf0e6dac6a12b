#pragma once

#include "Concurrency/MainActor.h"

#include <functional>
#include <memory>

namespace tavro {

/// The updates of the program, with everything that they need. Main thread only.
class AppMainUpdates {
public:
    AppMainUpdates() = default;
    AppMainUpdates(const AppMainUpdates&) = delete;
    AppMainUpdates& operator=(const AppMainUpdates&) = delete;
    virtual ~AppMainUpdates() = default;

    /// Null in a program that leaves updates to others. The main actor must outlive the result; `terminate`
    /// ends the application. Asks nobody yet.
    [[nodiscard]] static std::unique_ptr<AppMainUpdates> make(MainActor& mainActor,
                                                              std::function<void()> terminate);

    /// Looks for an update once, a moment after the start.
    virtual void checkAutomatically() = 0;

    /// Looks for an update, and tells what comes of it.
    virtual void checkManually() = 0;
};

} // namespace tavro
