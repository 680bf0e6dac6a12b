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
      output_(shell.controller, shell.midi), globalPlay_(shell.globalPlay), presets_(shell.presets),
      tutorial_(shell.globalPlay, shell.defaults, shell.mainActor, shell.keyboardAccess),
      menu_(shell.menu, shell.menuIsInWindow) {
    SceneModule::makeAvailable();
    useOwnFont();
    endRecordingOutOfSight();
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
    auto* created = window();
    return created != nullptr && connectKeys(*created);
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

bool MainWindowLoader::connectKeys(QQuickWindow& window) {
    auto* monitor = window.findChild<KeyboardEventMonitor*>();
    if (monitor == nullptr) {
        qCritical("The main window holds no keyboard monitor.");
        return false;
    }
    monitor_ = monitor;
    monitor->setTranslator(&shell_.translator);
    monitor->setPressedKeys(shell_.pressedKeys);
    monitor->setActions({
        .onKeyDown = [this](Character key) { shell_.controller.handleKeyDown(key); },
        .onKeyUp = [this](Character key) { shell_.controller.handleKeyUp(key); },
        .onRecordedHotkey =
            [this](const std::string& text, std::int64_t keyCode, HotkeyModifiers modifiers) {
                shell_.globalPlay.setGlobalPlayHotkey(text, keyCode, modifiers);
            },
        .onHotkey = [this] { shell_.globalPlay.toggleGlobalPlay(); },
        .onFocusChanged = [this](bool isFocused) { shell_.controller.setFocused(isFocused); },
        .onRecordingInterrupted = [this] { shell_.globalPlay.setRecordingGlobalPlayHotkey(false); },
        .catchUp = [this] { shell_.globalPlay.globalKeyboard().catchUp(); },
    });
    return true;
}

bool MainWindowLoader::handleKeyDirectly(const KeyEvent& event) {
    return monitor_ != nullptr && monitor_->handleDirectly(event);
}

HeldKeyNotices MainWindowLoader::heldKeyNotices() {
    return {.onReleased =
                [this](std::int64_t keyCode, std::uint32_t time) {
                    if (monitor_ != nullptr) {
                        monitor_->handleReleaseElsewhere(keyCode, time);
                    }
                },
            .onHeldBefore =
                [this](std::int64_t keyCode, std::uint32_t time) {
                    if (monitor_ != nullptr) {
                        monitor_->keepSilent(keyCode, time);
                    }
                },
            .isAwaited =
                [this](std::int64_t keyCode) { return monitor_ != nullptr && monitor_->isDown(keyCode); }};
}

bool MainWindowLoader::selfTest() {
    const auto problems = SceneSelfTest::problems(initialProperties());
    for (const auto& problem : problems) {
        qCritical("%s", qUtf8Printable(problem));
    }
    return problems.isEmpty();
}

} // namespace tavro
