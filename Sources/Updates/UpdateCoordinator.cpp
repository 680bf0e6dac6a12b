#include "Updates/UpdateCoordinator.h"

#include <utility>

namespace tavro {

UpdateCoordinator::UpdateCoordinator(const Environment& environment, std::function<void()> terminate)
    : environment_(environment), terminate_(std::move(terminate)) {}

void UpdateCoordinator::checkAutomatically() {
    automaticCheck_ = environment_.mainActor.after(automaticDelay, [this] { check(false); });
}

void UpdateCoordinator::check(bool showNoUpdate) {
    auto& running = showNoUpdate ? shownCheck_ : silentCheck_;
    if (running != nullptr) {
        return;
    }
    running = environment_.service.check([this, showNoUpdate](const Answer& answer) {
        // Before the user is told, who may then look again.
        const auto ended = std::move(showNoUpdate ? shownCheck_ : silentCheck_);
        if (answer.isSuccess() && answer.value()) {
            present(*answer.value());
        } else if (showNoUpdate) {
            tell(answer);
        }
    });
}

void UpdateCoordinator::tell(const Answer& answer) {
    if (answer.isSuccess()) {
        environment_.alert.show(
            tr("TAVRO is up to date"),
            tr("Version %1 is the newest available version.").arg(environment_.service.installedVersion()));
    } else {
        environment_.alert.show(tr("Could not check for updates"), answer.failure().description());
    }
}

void UpdateCoordinator::present(const AvailableUpdate& update) {
    if (model_ == nullptr) {
        model_ = std::make_unique<UpdateViewModel>(update, environment_.service, terminate_);
        environment_.window.create(*model_);
    }
    environment_.window.bringToFront();
}

} // namespace tavro
