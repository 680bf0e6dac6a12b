#include "Programs/tavro/AppMainAdapters.h"

#include "ApplicationShell/KeyboardTapChoice.h"
#include "Platform/Headless/ApplicationVisibilityAdapter.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/GuardAdapter.h"
#include "Platform/Headless/KeyboardTapAdapter.h"
#include "Platform/Headless/Keys/KeyEventTranslatorAdapter.h"
#include "Platform/Headless/LoginItemServiceAdapter.h"
#include "Platform/Headless/MenuBarAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Platform/Headless/SessionWatchAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Platform/Headless/WindowAspectAdapter.h"
#include "Programs/MidiSystems/MidiSystems.h"

#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QWindow>

#include <cstdint>
#include <utility>

#if defined(Q_OS_LINUX)
#include "Platform/Linux/Desktop/BootClockAdapter.h"
#include "Platform/Linux/Desktop/KeyEventTranslatorAdapter.h"
#include "Platform/Linux/Desktop/LoginItemServiceAdapter.h"
#include "Platform/Linux/Desktop/SystemBeep.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "Platform/Linux/Guard/GuardProcess.h"
#include "Platform/Linux/Session/OwnSeat.h"
#include "Platform/Linux/Session/SessionWatchAdapter.h"
#include "Platform/Linux/Settings/UserDefaultsAdapter.h"
#include "Platform/Linux/X11/ApplicationVisibilityAdapter.h"
#include "Platform/Linux/X11/DetectableAutorepeat.h"
#include "Platform/Linux/X11/DirectKeyFilter.h"
#include "Platform/Linux/X11/FocusWatch.h"
#include "Platform/Linux/X11/HeldKeyWatch.h"
#include "Platform/Linux/X11/KeyboardTapAdapter.h"
#include "Platform/Linux/X11/WindowAspectAdapter.h"
#elif defined(Q_OS_MACOS)
#include "Platform/MacOS/ApplicationIcon.h"
#include "Platform/MacOS/ApplicationVisibilityAdapter.h"
#include "Platform/MacOS/BootClockAdapter.h"
#include "Platform/MacOS/KeyboardTapAdapter.h"
#include "Platform/MacOS/Keys/KeyEventTranslatorAdapter.h"
#include "Platform/MacOS/LoginItemServiceAdapter.h"
#include "Platform/MacOS/MenuBarAdapter.h"
#include "Platform/MacOS/SessionWatchAdapter.h"
#include "Platform/MacOS/SystemBeep.h"
#include "Platform/MacOS/UserDefaultsAdapter.h"
#include "Platform/MacOS/WindowAspectAdapter.h"
#endif

namespace tavro {

namespace {

/// Reaches nobody: every client that is asked for fails with the status, unless that is 0.
MidiSystemTable headlessMidiSystems(std::int32_t status) {
    return MidiSystemTable({{QStringLiteral("headless"), QStringLiteral("Headless"),
                             [status](MainActor&, const MidiSystemOptions&) {
                                 auto headless = std::make_unique<headless::MidiSystemAdapter>();
                                 headless->clientStatus = status;
                                 headless->recordsMessages = false;
                                 return headless;
                             }}});
}

/// Where there is none, nothing is reached, and the status text has to say so.
MidiSystemTable midiSystemsToTry() {
    const auto& table = MidiSystems::ofThisPlatform();
    return table.entries().empty() ? headlessMidiSystems(-1) : table;
}

std::unique_ptr<KeyEventTranslator> makeKeyEventTranslator() {
#if defined(Q_OS_LINUX)
    const auto platform = QGuiApplication::platformName();
    if (platform == QLatin1String("xcb") || platform.startsWith(QLatin1String("wayland"))) {
        linuxos::DetectableAutorepeat::enable();
        return std::make_unique<linuxos::KeyEventTranslatorAdapter>();
    }
#elif defined(Q_OS_MACOS)
    if (QGuiApplication::platformName() == QLatin1String("cocoa")) {
        return std::make_unique<macos::KeyEventTranslatorAdapter>();
    }
#endif
    return std::make_unique<headless::KeyEventTranslatorAdapter>();
}

#if defined(Q_OS_LINUX)
std::unique_ptr<guard::GuardProcess> makeGuard() {
    const auto display =
        QGuiApplication::platformName() == QLatin1String("xcb") ? qgetenv("DISPLAY") : QByteArray();
    return std::make_unique<guard::GuardProcess>(
        QCoreApplication::applicationDirPath().toStdString() + "/tavro-guard", display.toStdString());
}

std::unique_ptr<KeyboardTap> makeKeyboardTap(guard::GuardProcess& guard) {
    const KeyboardTapChoice choice{.platformName = QGuiApplication::platformName(),
                                   .sessionType = qEnvironmentVariable("XDG_SESSION_TYPE"),
                                   .waylandDisplay = qEnvironmentVariable("WAYLAND_DISPLAY"),
                                   .hasInputDevices = QFileInfo::exists(QStringLiteral("/dev/input"))};
    switch (choice.kind()) {
    case KeyboardTapChoice::Kind::x11:
        return std::make_unique<x11::KeyboardTapAdapter>(guard);
    case KeyboardTapChoice::Kind::evdev:
        return std::make_unique<evdev::KeyboardTapAdapter>(
            evdev::InputDevices{.seat = linuxos::OwnSeat::name()}, &guard);
    case KeyboardTapChoice::Kind::none:
        break;
    }
    return std::make_unique<headless::KeyboardTapAdapter>();
}
#endif

} // namespace

AppMainAdapters AppMainAdapters::ofThisPlatform() {
    auto adapters = headless();
    adapters.midiSystems = midiSystemsToTry();
    adapters.keyEventTranslator = makeKeyEventTranslator();
#if defined(Q_OS_LINUX)
    adapters.sessionWatch = std::make_unique<linuxos::SessionWatchAdapter>();
    auto guard = makeGuard();
    adapters.keyboardTap = makeKeyboardTap(*guard);
    adapters.guard = std::move(guard);
    adapters.userDefaults = std::make_unique<linuxos::UserDefaultsAdapter>();
    adapters.bootClock = std::make_unique<linuxos::BootClockAdapter>();
    adapters.loginItemService = std::make_unique<linuxos::LoginItemServiceAdapter>();
    adapters.systemBeep = linuxos::systemBeep;
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        adapters.applicationVisibility = std::make_unique<x11::ApplicationVisibilityAdapter>();
        adapters.windowAspect = std::make_unique<x11::WindowAspectAdapter>();
    }
#elif defined(Q_OS_MACOS)
    adapters.sessionWatch = std::make_unique<macos::SessionWatchAdapter>();
    adapters.keyboardTap = std::make_unique<macos::KeyboardTapAdapter>();
    adapters.userDefaults = std::make_unique<macos::UserDefaultsAdapter>();
    adapters.bootClock = std::make_unique<macos::BootClockAdapter>();
    adapters.loginItemService = std::make_unique<macos::LoginItemServiceAdapter>();
    adapters.systemBeep = macos::systemBeep;
    if (QGuiApplication::platformName() == QLatin1String("cocoa")) {
        adapters.applicationVisibility = std::make_unique<macos::ApplicationVisibilityAdapter>();
        adapters.windowAspect = std::make_unique<macos::WindowAspectAdapter>();
        adapters.menuBar = std::make_unique<macos::MenuBarAdapter>();
    }
#endif
    return adapters;
}

AppMainAdapters AppMainAdapters::headless() {
    return {.guard = std::make_unique<headless::GuardAdapter>(),
            .midiSystems = headlessMidiSystems(0),
            .keyboardTap = std::make_unique<headless::KeyboardTapAdapter>(),
            .sessionWatch = std::make_unique<headless::SessionWatchAdapter>(),
            .userDefaults = std::make_unique<headless::UserDefaultsAdapter>(),
            .bootClock = std::make_unique<headless::BootClockAdapter>(),
            .loginItemService = std::make_unique<headless::LoginItemServiceAdapter>(),
            .systemBeep = [] {},
            .keyEventTranslator = std::make_unique<headless::KeyEventTranslatorAdapter>(),
            .applicationVisibility = std::make_unique<headless::ApplicationVisibilityAdapter>(),
            .windowAspect = std::make_unique<headless::WindowAspectAdapter>(),
            .menuBar = std::make_unique<headless::MenuBarAdapter>()};
}

std::unique_ptr<QAbstractNativeEventFilter>
AppMainAdapters::directKeyFilter([[maybe_unused]] QWindow& window,
                                 [[maybe_unused]] std::function<bool(const KeyEvent&)> handler) {
#if defined(Q_OS_LINUX)
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        return std::make_unique<x11::DirectKeyFilter>(window, std::move(handler));
    }
#endif
    return nullptr;
}

std::unique_ptr<QAbstractNativeEventFilter>
AppMainAdapters::focusWatch([[maybe_unused]] std::function<void(bool hasFocus)> handler) {
#if defined(Q_OS_LINUX)
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        return std::make_unique<x11::FocusWatch>(std::move(handler));
    }
#endif
    return nullptr;
}

std::unique_ptr<QAbstractNativeEventFilter>
AppMainAdapters::heldKeyWatch([[maybe_unused]] QWindow& window, [[maybe_unused]] HeldKeyNotices& notices) {
#if defined(Q_OS_LINUX)
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        return x11::HeldKeyWatch::start(window, notices);
    }
#endif
    return nullptr;
}

ModifierNaming AppMainAdapters::modifierNaming() {
#if defined(Q_OS_MACOS)
    return ModifierNaming::symbols;
#else
    return ModifierNaming::words;
#endif
}

KeyboardAccess AppMainAdapters::keyboardAccess() {
#if defined(Q_OS_MACOS)
    return KeyboardAccess::accessibilitySettings;
#else
    return KeyboardAccess::displayOrInputDevices;
#endif
}

void AppMainAdapters::installIcon() {
#if defined(Q_OS_MACOS)
    macos::ApplicationIcon::install();
#else
    QIcon icon;
    const QDir folder(QStringLiteral(":/tavro/icons"));
    for (const auto& name : folder.entryList(QDir::Files)) {
        icon.addFile(folder.filePath(name));
    }
    if (!icon.isNull()) {
        QGuiApplication::setWindowIcon(icon);
    }
#endif
}

} // namespace tavro
