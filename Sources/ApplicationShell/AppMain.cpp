#include "ApplicationShell/ApplicationOptions.h"
#include "ApplicationShell/GlobalPlay.h"
#include "ApplicationShell/KeyboardTapChoice.h"
#include "ApplicationShell/MidiSystemChooser.h"
#include "ApplicationShell/PerformanceController.h"
#include "ApplicationShell/QtMainActor.h"
#include "Platform/Headless/KeyEventTranslatorAdapter.h"
#include "Platform/Headless/KeyboardTapAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Platform/Posix/TerminationSignals.h"
#include "UserInterface/MainWindowLoader.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <cstring>
#include <iostream>
#include <memory>

#if defined(Q_OS_LINUX)
#include "Platform/Linux/Alsa/MidiSystemAdapter.h"
#include "Platform/Linux/DetectableAutorepeat.h"
#include "Platform/Linux/Evdev/KeyboardTapAdapter.h"
#include "Platform/Linux/Jack/MidiSystemAdapter.h"
#include "Platform/Linux/KeyEventTranslatorAdapter.h"
#include "Platform/Linux/X11/KeyboardTapAdapter.h"
#elif defined(Q_OS_MACOS)
#include "Platform/MacOS/KeyEventTranslatorAdapter.h"
#include "Platform/MacOS/KeyboardTapAdapter.h"
#include "Platform/MacOS/MidiSystemAdapter.h"
#endif

namespace {

using namespace tavro;

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badUsage = 2;

std::unique_ptr<MidiSystem> makeMidiSystem(const QString& name, [[maybe_unused]] MainActor& mainActor) {
    const MidiSystemChooser chooser({
#if defined(Q_OS_LINUX)
        {QStringLiteral("alsa"), [&] { return std::make_unique<alsa::MidiSystemAdapter>(mainActor); }},
        {QStringLiteral("jack"), [&] { return std::make_unique<jack::MidiSystemAdapter>(mainActor); }},
#elif defined(Q_OS_MACOS)
        {QStringLiteral("coremidi"), [] { return std::make_unique<macos::MidiSystemAdapter>(); }},
#endif
    });
    auto choice = chooser.choose(name);
    if (choice.system != nullptr) {
        return std::move(choice.system);
    }
    // Nothing is reached, and the status text has to say so.
    auto headless = std::make_unique<headless::MidiSystemAdapter>();
    headless->clientStatus = choice.failures.empty() ? -1 : choice.failures.back().status;
    headless->recordsMessages = false;
    return headless;
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

std::unique_ptr<KeyboardTap> makeKeyboardTap() {
#if defined(Q_OS_LINUX)
    const KeyboardTapChoice choice{.platformName = QGuiApplication::platformName(),
                                   .sessionType = qEnvironmentVariable("XDG_SESSION_TYPE"),
                                   .waylandDisplay = qEnvironmentVariable("WAYLAND_DISPLAY"),
                                   .hasInputDevices = QFileInfo::exists(QStringLiteral("/dev/input"))};
    switch (choice.kind()) {
    case KeyboardTapChoice::Kind::x11:
        return std::make_unique<x11::KeyboardTapAdapter>(
            QCoreApplication::applicationDirPath().toStdString() + "/tavro-key-guard");
    case KeyboardTapChoice::Kind::evdev:
        return std::make_unique<evdev::KeyboardTapAdapter>();
    case KeyboardTapChoice::Kind::none:
        break;
    }
#elif defined(Q_OS_MACOS)
    return std::make_unique<macos::KeyboardTapAdapter>();
#endif
    return std::make_unique<headless::KeyboardTapAdapter>();
}

ModifierNaming modifierNaming() {
#if defined(Q_OS_MACOS)
    return ModifierNaming::symbols;
#else
    return ModifierNaming::words;
#endif
}

void printStatusTexts(const MidiOutputManager& midi) {
    const auto print = [&midi] { std::cout << "status: " << midi.statusText().toStdString() << std::endl; };
    print();
    QObject::connect(&midi, &MidiOutputManager::statusTextChanged, &midi, print);
}

void printStatusTexts(const GlobalKeyboardController& globalKeyboard) {
    QObject::connect(
        &globalKeyboard, &GlobalKeyboardController::statusTextChanged, &globalKeyboard, [&globalKeyboard] {
            std::cout << "global play: " << globalKeyboard.statusText().toStdString() << std::endl;
        });
}

int selfTest() {
    QtMainActor mainActor;
    headless::MidiSystemAdapter midiSystem;
    MidiOutputManager midi(midiSystem, mainActor);
    PerformanceController controller(midi, mainActor);
    headless::KeyboardTapAdapter tap;
    GlobalKeyboardController globalKeyboard(tap, mainActor);
    GlobalPlay globalPlay(controller, globalKeyboard, modifierNaming());
    const headless::KeyEventTranslatorAdapter translator;
    return MainWindowLoader(controller, midi, globalPlay, translator).selfTest() ? success : failure;
}

int runApplication(const ApplicationOptions& options) {
    QtMainActor mainActor;
    const auto midiSystem = makeMidiSystem(options.midi, mainActor);
    MidiOutputManager midi(*midiSystem, mainActor);
    if (options.printsStatus) {
        printStatusTexts(midi);
    }
    PerformanceController controller(midi, mainActor, options.initialState);
    const auto tap = makeKeyboardTap();
    GlobalKeyboardController globalKeyboard(*tap, mainActor);
    if (options.printsStatus) {
        printStatusTexts(globalKeyboard);
    }
    GlobalPlay globalPlay(controller, globalKeyboard, modifierNaming());
    globalPlay.configureGlobalKeyboard();
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &globalPlay,
                     [&globalPlay](Qt::ApplicationState state) {
                         globalPlay.setApplicationActive(state == Qt::ApplicationActive);
                     });
    // The keys first: nothing may begin to sound behind the last silence.
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &globalKeyboard,
                     &GlobalKeyboardController::stop);
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &controller, &PerformanceController::shutDown);
    const posix::TerminationSignals signals(&QGuiApplication::quit);
    const auto translator = makeKeyEventTranslator();
    MainWindowLoader window(controller, midi, globalPlay, *translator);
    if (!window.load()) {
        std::cerr << "tavro: the window could not be made\n";
        return failure;
    }
    return QGuiApplication::exec();
}

int run(const ApplicationOptions& options) {
    switch (options.task) {
    case ApplicationOptions::Task::showHelp:
        std::cout << ApplicationOptions::helpText().toStdString();
        return success;
    case ApplicationOptions::Task::showVersion:
        std::cout << "tavro " TAVRO_VERSION "\n";
        return success;
    case ApplicationOptions::Task::selfTest:
        return selfTest();
    case ApplicationOptions::Task::run:
        break;
    }
    return runApplication(options);
}

/// Help and version are for terminals, where there may be no display to connect to.
bool needsNoDisplay(int argc, char* argv[]) {
    for (int index = 1; index < argc; ++index) {
        if (std::strcmp(argv[index], "--help") == 0 || std::strcmp(argv[index], "--version") == 0) {
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char* argv[]) {
    std::unique_ptr<QCoreApplication> application;
    if (needsNoDisplay(argc, argv)) {
        application = std::make_unique<QCoreApplication>(argc, argv);
    } else {
        application = std::make_unique<QGuiApplication>(argc, argv);
    }
    QCoreApplication::setApplicationName(QStringLiteral("tavro"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TAVRO_VERSION));
    try {
        return run(
            ApplicationOptions::parse(QCoreApplication::arguments(), qEnvironmentVariable("TAVRO_MIDI")));
    } catch (const ApplicationOptions::Error& error) {
        std::cerr << "tavro: " << error.what() << "\n" << ApplicationOptions::helpText().toStdString();
        return badUsage;
    }
}
