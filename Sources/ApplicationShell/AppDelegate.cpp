#include "ApplicationShell/AppDelegate.h"

#include <stdexcept>
#include <utility>

namespace tavro {

AppDelegate::AppDelegate(ApplicationWindow& window, Preferences& preferences, Actions actions)
    : window_(window), preferences_(preferences), actions_(std::move(actions)) {}

bool AppDelegate::applicationDidFinishLaunching() {
    actions_.installMainMenu();
    actions_.installIcon();
    if (!window_.create(WindowMeasures())) {
        return false;
    }
    window_.show();
    if (shouldMinimize()) {
        window_.minimize();
    } else {
        window_.activate();
    }
    if (actions_.startUpdates) {
        actions_.startUpdates();
    }
    return true;
}

bool AppDelegate::shouldMinimize() {
    try {
        return preferences_.shouldMinimizeLaunchAtLoginWindow();
    } catch (const std::range_error&) {
        // A system that cannot tell its boots apart: better in the way than out of sight at every launch.
        return false;
    }
}

void AppDelegate::applicationWillTerminate() {
    if (std::exchange(hasTerminated_, true)) {
        return;
    }
    // The keys first: nothing may begin to sound behind the last silence.
    actions_.endGlobalPlay();
    if (!isSilent_) {
        actions_.silenceForGood();
    }
}

void AppDelegate::sessionMayEnd() {
    if (!hasTerminated_ && !isSilent_) {
        actions_.silence();
        isSilent_ = true;
    }
}

} // namespace tavro
