#pragma once

#include "ApplicationShell/ApplicationWindow.h"
#include "Preferences/AppPreferences.h"

#include <functional>

namespace tavro {

/// Starts and ends the application. Main thread only.
class AppDelegate {
public:
    /// What the steps do; none may be empty, but for the last.
    struct Actions {
        std::function<void()> installMainMenu;
        /// Tells nobody when there is no icon.
        std::function<void()> installIcon;
        /// Ends the playing of other applications' keys for good.
        std::function<void()> endGlobalPlay;
        /// Ends whatever sounds. The performance goes on.
        std::function<void()> silence;
        /// Ends whatever sounds, as the last thing that is sent.
        std::function<void()> silenceForGood;
        /// Begins what runs beside the performance, once the window is there.
        std::function<void()> startUpdates;
    };

    /// The window and the preferences must outlive this.
    AppDelegate(ApplicationWindow& window, Preferences& preferences, Actions actions);

    /// The start: menu, icon, window. It comes to the front, unless this is the launch at login. False when
    /// there is no window; the application is to be ended then.
    [[nodiscard]] bool applicationDidFinishLaunching();

    /// Closing the main window ends the application.
    [[nodiscard]] static constexpr bool applicationShouldTerminateAfterLastWindowClosed() { return true; }

    /// The end is certain. Called again it does nothing.
    void applicationWillTerminate();

    /// The user's session is about to end, perhaps with no further notice, and perhaps not after all: nothing
    /// goes on sounding, and everything can be played on.
    void sessionMayEnd();

    /// A key was played. After `sessionMayEnd` the end then has something to silence again.
    void performanceWentOn() { isSilent_ = false; }

private:
    [[nodiscard]] bool shouldMinimize();

    ApplicationWindow& window_;
    Preferences& preferences_;
    Actions actions_;
    bool isSilent_ = false;
    bool hasTerminated_ = false;
};

} // namespace tavro
