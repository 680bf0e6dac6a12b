#pragma once

#include "Concurrency/MainActor.h"
#include "Updates/UpdateAlert.h"
#include "Updates/UpdateService.h"
#include "Updates/UpdateViewModel.h"
#include "Updates/UpdateWindow.h"

#include <QCoreApplication>

#include <chrono>
#include <functional>
#include <memory>

namespace tavro {

/// Decides when the program looks for updates and what the user hears of it. Main thread only.
class UpdateCoordinator {
    Q_DECLARE_TR_FUNCTIONS(tavro::UpdateCoordinator)

public:
    /// From the start to the automatic check.
    static constexpr std::chrono::seconds automaticDelay{2};

    /// All of it must outlive the coordinator.
    struct Environment {
        UpdateService& service;
        UpdateWindow& window;
        UpdateAlert& alert;
        MainActor& mainActor;
    };

    /// `terminate` ends the application.
    UpdateCoordinator(const Environment& environment, std::function<void()> terminate);

    /// Looks once, a moment later, and tells of nothing but an update.
    void checkAutomatically();

    /// Looks at once and tells whatever comes of it. One such look at a time.
    void checkManually() { check(true); }

    /// Looks at once. With `showNoUpdate` the user is also told that there is none, or why that is not known.
    void check(bool showNoUpdate);

    /// Offers the update. A window that was made already stays with the update that it was made for.
    void present(const AvailableUpdate& update);

private:
    using Answer = Outcome<std::optional<AvailableUpdate>>;

    void tell(const Answer& answer);

    Environment environment_;
    std::function<void()> terminate_;
    std::unique_ptr<UpdateViewModel> model_;
    ScheduledTask automaticCheck_;
    std::unique_ptr<PendingWork> silentCheck_;
    std::unique_ptr<PendingWork> shownCheck_;
};

} // namespace tavro
