#pragma once

#include "KeyboardInput/KeyboardAccess.h"
#include "MidiOutput/MidiSystemTable.h"
#include "PlatformInterfaces/Application/KeyEventTranslator.h"
#include "PlatformInterfaces/Application/MenuBar.h"
#include "PlatformInterfaces/Application/WindowAspect.h"
#include "PlatformInterfaces/ApplicationVisibility.h"
#include "PlatformInterfaces/BootClock.h"
#include "PlatformInterfaces/Guard.h"
#include "PlatformInterfaces/HeldKeyNotices.h"
#include "PlatformInterfaces/HotkeyModifiers.h"
#include "PlatformInterfaces/KeyEvent.h"
#include "PlatformInterfaces/KeyboardTap.h"
#include "PlatformInterfaces/LoginItemService.h"
#include "PlatformInterfaces/SessionWatch.h"
#include "PlatformInterfaces/UserDefaults.h"

#include <QAbstractNativeEventFilter>
#include <QString>

#include <functional>
#include <memory>

class QWindow;

namespace tavro {

/// The platform behind the program's interfaces. The only place that chooses adapters for `tavro`.
struct AppMainAdapters {
    /// Says farewell behind everything else.
    std::unique_ptr<Guard> guard;
    /// At least one.
    MidiSystemTable midiSystems;
    std::unique_ptr<KeyboardTap> keyboardTap;
    std::unique_ptr<SessionWatch> sessionWatch;
    std::unique_ptr<UserDefaults> userDefaults;
    std::unique_ptr<BootClock> bootClock;
    std::unique_ptr<LoginItemService> loginItemService;
    /// The sound that tells the user of a failure.
    std::function<void()> systemBeep;
    std::unique_ptr<KeyEventTranslator> keyEventTranslator;
    std::unique_ptr<ApplicationVisibility> applicationVisibility;
    std::unique_ptr<WindowAspect> windowAspect;
    std::unique_ptr<MenuBar> menuBar;

    /// Those that fit the platform and the session, each with the headless one as the last choice. The
    /// application object must exist.
    [[nodiscard]] static AppMainAdapters ofThisPlatform();

    /// Those that reach nobody.
    [[nodiscard]] static AppMainAdapters headless();

    /// The way of plain keys to the handler past the window system's queue, for as long as it exists. Null
    /// where there is none.
    [[nodiscard]] static std::unique_ptr<QAbstractNativeEventFilter>
    directKeyFilter(QWindow& window, std::function<bool(const KeyEvent&)> handler);

    /// Tells, for as long as it exists, when the application gets the keyboard and when it loses it, sooner
    /// than the application object does. Null where there is no need for it.
    [[nodiscard]] static std::unique_ptr<QAbstractNativeEventFilter>
    focusWatch(std::function<void(bool hasFocus)> handler);

    /// Tells, for as long as it exists, what the window is not sent about its keys. To be made behind the way
    /// of the plain keys, which would hide them. Null where the window system tells no more.
    [[nodiscard]] static std::unique_ptr<QAbstractNativeEventFilter> heldKeyWatch(QWindow& window,
                                                                                  HeldKeyNotices& notices);

    [[nodiscard]] static ModifierNaming modifierNaming();

    [[nodiscard]] static KeyboardAccess keyboardAccess();

    /// Makes the program's icon that of the application; without one the system's own stays.
    static void installIcon();
};

} // namespace tavro
