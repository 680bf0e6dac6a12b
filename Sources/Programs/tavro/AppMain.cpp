#include "ApplicationShell/ApplicationOptions.h"
#include "Performance/OrderlyStop.h"
#include "Platform/Qt/ProcessSignals.h"
#include "Platform/Qt/QtMainActor.h"
#include "Programs/MidiSystems/MidiSystems.h"
#include "Programs/tavro/AppMainAdapters.h"
#include "Programs/tavro/AppMainComposition.h"

#include <QAbstractEventDispatcher>
#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QThread>

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>
#include <utility>

namespace {

using namespace tavro;

constexpr int success = 0;
constexpr int failure = 1;
constexpr int badUsage = 2;

void printStatusTexts(const AppMainComposition& program) {
    const auto& midi = program.midi;
    const auto print = [&midi] { std::cout << "status: " << midi.statusText().toStdString() << std::endl; };
    print();
    QObject::connect(&midi, &MidiOutputManager::statusTextChanged, &midi, print);
    const auto& keyboard = program.globalKeyboard;
    QObject::connect(&keyboard, &GlobalKeyboardController::statusTextChanged, &keyboard, [&keyboard] {
        std::cout << "global play: " << keyboard.statusText().toStdString() << std::endl;
    });
}

/// Tells Global Play who is in front, for as long as the result exists.
std::unique_ptr<QAbstractNativeEventFilter> followTheFront(GlobalPlay& globalPlay) {
    const auto tell = [&globalPlay](bool isActive) { globalPlay.setApplicationActive(isActive); };
    if (auto watch = AppMainAdapters::focusWatch(tell)) {
        return watch;
    }
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &globalPlay,
                     [tell](Qt::ApplicationState state) { tell(state == Qt::ApplicationActive); });
    return nullptr;
}

/// What is typed in front of a lock screen or in another session is not for Global Play.
void followTheSession(SessionWatch& watch, GlobalKeyboardController& keyboard) {
    watch.start([&keyboard](bool isInFront) {
        if (isInFront) {
            keyboard.resume(GlobalKeyboardController::Pause::session);
        } else {
            keyboard.pause(GlobalKeyboardController::Pause::session);
        }
    });
}

void tellOfTheEnd(AppMainComposition& program) {
    auto& delegate = program.delegate;
    auto& controller = program.controller;
    QGuiApplication::setQuitOnLastWindowClosed(
        AppDelegate::applicationShouldTerminateAfterLastWindowClosed());
    QObject::connect(qGuiApp, &QGuiApplication::aboutToQuit, &controller,
                     [&delegate] { delegate.applicationWillTerminate(); });
    // Not at `saveStateRequest`: that comes at the beginning of a session and in the middle of it as well.
    QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, &controller,
                     [&delegate] { delegate.sessionMayEnd(); });
    QObject::connect(&controller, &PerformanceController::keyboardDisplayChanged, &controller,
                     [&delegate, &controller] {
                         if (!controller.activeKeys().empty()) {
                             delegate.performanceWentOn();
                         }
                     });
}

/// Shows the guard that the event loop turns, and that it works off one event after the other within a turn:
/// for each change of the keymap Qt asks the X server hundreds of questions, and changes come in swarms.
class LifeSigns final : public QAbstractNativeEventFilter {
public:
    explicit LifeSigns(GuardLink& guardLink) : guardLink_(guardLink) {
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, &context_,
                         [this] { guardLink_.showLife(); });
        qGuiApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray& /*type*/, void* /*event*/, qintptr* /*result*/) override {
        guardLink_.showLife();
        return false;
    }

private:
    GuardLink& guardLink_;
    QObject context_;
};

/// Closing the main window ends the program, whatever other window is open.
void quitWith(const QQuickWindow& window) {
    QObject::connect(&window, &QWindow::visibleChanged, qGuiApp, [](bool isVisible) {
        // A minimised or covered window is visible. Later: the end closes the windows that are left, and this
        // one is about to be.
        if (!isVisible) {
            QMetaObject::invokeMethod(qGuiApp, &QGuiApplication::quit, Qt::QueuedConnection);
        }
    });
}

/// Silences what sounds when the process ends in the middle of its event loop, as Qt ends it when the X
/// server has gone: nothing is destroyed then. One at a time.
class EndInTheMiddle {
public:
    explicit EndInTheMiddle(AppMainComposition& program) {
        running = &program;
        std::atexit(&end);
    }

    ~EndInTheMiddle() { running = nullptr; }

    EndInTheMiddle(const EndInTheMiddle&) = delete;
    EndInTheMiddle& operator=(const EndInTheMiddle&) = delete;

private:
    static void end() {
        if (running == nullptr || QThread::currentThread() != qGuiApp->thread()) {
            return;
        }
        auto& program = *std::exchange(running, nullptr);
        // The window can show nothing any more: much of what Qt would need for it has gone.
        program.controller.blockSignals(true);
        program.midi.blockSignals(true);
        program.controller.shutDown();
        program.midi.close();
    }

    static inline AppMainComposition* running = nullptr;
};

int selfTest() {
    QtMainActor mainActor;
    const auto adapters = AppMainAdapters::headless();
    return AppMainComposition(adapters, mainActor).window.selfTest() ? success : failure;
}

int runApplication(const ApplicationOptions& options) {
    QtMainActor mainActor;
    const auto adapters = AppMainAdapters::ofThisPlatform();
    AppMainComposition program(adapters, mainActor, options.midi);
    const EndInTheMiddle endInTheMiddle(program);
    if (options.printsStatus) {
        printStatusTexts(program);
    }
    const auto focusWatch = followTheFront(program.globalPlay);
    followTheSession(*adapters.sessionWatch, program.globalKeyboard);
    tellOfTheEnd(program);
    const LifeSigns lifeSigns(program.guardLink);
    std::optional<posix::ProcessSignals> signals;
    OrderlyStop orderlyStop(
        program.globalKeyboard, program.controller, program.guardLink, mainActor,
        {.stopNow = [&signals] { signals->stopNow(); }, .tellGuard = [&program] { program.tellGuard(); }});
    signals.emplace(&QGuiApplication::quit, [&orderlyStop] { orderlyStop.begin(); });
    if (!program.delegate.applicationDidFinishLaunching()) {
        std::cerr << "tavro: the window could not be made\n";
        return failure;
    }
    quitWith(*program.window.window());
    if (!options.presetFile.isEmpty()) {
        program.presets.openPresetFromFile(options.presetFile);
    }
    if (options.hasInitialState) {
        program.controller.loadState(options.initialState);
    }
    const auto directKeyFilter = AppMainAdapters::directKeyFilter(
        *program.window.window(),
        [&keys = *program.window.keys()](const KeyEvent& event) { return keys.handleDirectly(event); });
    const auto heldKeyWatch =
        AppMainAdapters::heldKeyWatch(*program.window.window(), program.window.router());
    program.pressedKeys->setWatching(PressedKeys::Witness::windowSystem, heldKeyWatch != nullptr);
    return QGuiApplication::exec();
}

int run(const ApplicationOptions& options) {
    switch (options.task) {
    case ApplicationOptions::Task::showHelp:
        std::cout << ApplicationOptions::helpText(MidiSystems::ofThisPlatform()).toStdString();
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
    // By which desktops find the name and the icon of a window's program.
    QGuiApplication::setDesktopFileName(QStringLiteral("tavro"));
    try {
        return run(ApplicationOptions::parse(QCoreApplication::arguments(), MidiSystems::ofThisPlatform(),
                                             qEnvironmentVariable("TAVRO_MIDI")));
    } catch (const ApplicationOptions::Error& error) {
        std::cerr << "tavro: " << error.what() << "\n"
                  << ApplicationOptions::helpText(MidiSystems::ofThisPlatform()).toStdString();
        return badUsage;
    }
}
