#include "UserInterface/MainWindowLoader.h"

#include "UserInterface/SceneModule.h"
#include "UserInterface/SceneSelfTest.h"

#include <QFont>
#include <QGuiApplication>

namespace tavro {

namespace {

void useOwnFont() {
    QFont font = QGuiApplication::font();
    font.setFamilies({QStringLiteral("Inter"), QStringLiteral("Noto Sans"), QStringLiteral("DejaVu Sans")});
    QGuiApplication::setFont(font);
}

} // namespace

MainWindowLoader::MainWindowLoader(const Shell& shell)
    : shell_(shell), settings_(shell.controller), grid_(shell.controller),
      output_(shell.controller, shell.midi, shell.midiSystem), globalPlay_(shell.globalPlay),
      presets_(shell.presets),
      tutorial_(shell.globalPlay, shell.defaults, shell.mainActor, shell.keyboardAccess),
      menu_(shell.menu, shell.menuIsInWindow) {
    SceneModule::makeAvailable();
    useOwnFont();
    connectRouter();
    endRecordingOutOfSight();
}

void MainWindowLoader::connectRouter() {
    router_.keys = shell_.pressedKeys;
    router_.onKeyDown = [this](Character key) { shell_.controller.handleKeyDown(key); };
    router_.onKeyUp = [this](Character key) { shell_.controller.handleKeyUp(key); };
    router_.onRecordedHotkey = [this](const ToggleHotkey& hotkey) {
        shell_.globalPlay.setGlobalPlayHotkey(hotkey);
    };
    router_.onRecordingInterrupted = [this] { shell_.globalPlay.setRecordingGlobalPlayHotkey(false); };
    router_.onHotkey = [this] { shell_.globalPlay.toggleGlobalPlay(); };
    router_.onFocusChanged = [this](bool isFocused) { shell_.controller.setFocused(isFocused); };
    router_.catchUp = [this] { shell_.globalPlay.globalKeyboard().catchUp(); };
    const auto followHotkey = [this] {
        router_.hotkey = shell_.globalPlay.globalPlayHotkey();
        router_.isRecordingHotkey = shell_.globalPlay.isRecordingGlobalPlayHotkey();
    };
    const auto followLayout = [this] { router_.layoutKind = shell_.controller.state().keyboardLayout; };
    followHotkey();
    followLayout();
    QObject::connect(&shell_.globalPlay, &GlobalPlay::hotkeyChanged, &globalPlay_, followHotkey);
    QObject::connect(&shell_.controller, &PerformanceController::stateChanged, &grid_, followLayout);
}

void MainWindowLoader::endRecordingOutOfSight() {
    QObject::connect(&panels_, &WindowPanels::isSettingsVisibleChanged, &globalPlay_, [this] {
        if (!panels_.isSettingsVisible()) {
            globalPlay_.setRecordingHotkey(false);
        }
    });
    QObject::connect(&tutorial_, &TutorialPresenter::visibilityChanged, &globalPlay_, [this] {
        if (tutorial_.isTutorialVisible()) {
            globalPlay_.setRecordingHotkey(false);
        }
    });
}

QVariantMap MainWindowLoader::initialProperties() {
    constexpr WindowMeasures measures;
    return {{QStringLiteral("width"), measures.width},
            {QStringLiteral("height"), measures.height},
            {QStringLiteral("settings"), QVariant::fromValue(&settings_)},
            {QStringLiteral("grid"), QVariant::fromValue(&grid_)},
            {QStringLiteral("output"), QVariant::fromValue(&output_)},
            {QStringLiteral("globalPlay"), QVariant::fromValue(&globalPlay_)},
            {QStringLiteral("presets"), QVariant::fromValue(&presets_)},
            {QStringLiteral("tutorial"), QVariant::fromValue(&tutorial_)},
            {QStringLiteral("panels"), QVariant::fromValue(&panels_)},
            {QStringLiteral("menu"), QVariant::fromValue(&menu_)},
            {QStringLiteral("launchAtLogin"), QVariant::fromValue<QObject*>(&shell_.launchAtLogin)},
            {QStringLiteral("pickerChoices"), QVariant::fromValue(&choices_)}};
}

bool MainWindowLoader::create() {
    engine_.setInitialProperties(initialProperties());
    engine_.load(SceneModule::urlOf(QStringLiteral("MainWindow.qml")));
    if (window() == nullptr) {
        return false;
    }
    keys_ = window()->findChild<KeyboardEventMonitor*>();
    if (keys_ == nullptr) {
        qCritical("The main window holds no keyboard monitor.");
        return false;
    }
    keys_->watchFor(router_, shell_.translator);
    return true;
}

void MainWindowLoader::show() {
    window()->show();
    tutorial_.mainWindowWasShown();
}

bool MainWindowLoader::load() {
    if (!create()) {
        return false;
    }
    show();
    window()->requestActivate();
    return true;
}

QQuickWindow* MainWindowLoader::window() const {
    const auto roots = engine_.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.front());
}

bool MainWindowLoader::selfTest() {
    const auto problems = SceneSelfTest::problems(initialProperties());
    for (const auto& problem : problems) {
        qCritical("%s", qUtf8Printable(problem));
    }
    return problems.isEmpty();
}

} // namespace tavro
