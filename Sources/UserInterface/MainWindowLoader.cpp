#include "UserInterface/MainWindowLoader.h"

#include "KeyboardInput/KeyboardEventMonitor.h"
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

MainWindowLoader::MainWindowLoader(PerformanceController& controller, MidiOutputManager& midi,
                                   GlobalPlay& globalPlay, const KeyEventTranslator& translator)
    : controller_(controller), globalPlay_(globalPlay), translator_(translator), settings_(controller),
      grid_(controller), output_(controller, midi), globalPlayShown_(globalPlay) {
    SceneModule::makeAvailable();
    useOwnFont();
}

QVariantMap MainWindowLoader::initialProperties() {
    return {{QStringLiteral("settings"), QVariant::fromValue(&settings_)},
            {QStringLiteral("grid"), QVariant::fromValue(&grid_)},
            {QStringLiteral("output"), QVariant::fromValue(&output_)},
            {QStringLiteral("globalPlay"), QVariant::fromValue(&globalPlayShown_)},
            {QStringLiteral("pickerChoices"), QVariant::fromValue(&choices_)}};
}

bool MainWindowLoader::load() {
    engine_.setInitialProperties(initialProperties());
    engine_.load(SceneModule::urlOf(QStringLiteral("MainWindow.qml")));
    auto* created = window();
    if (created == nullptr || !connectKeys(*created)) {
        return false;
    }
    created->show();
    created->requestActivate();
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
    monitor->setTranslator(&translator_);
    monitor->setActions({
        .onKeyDown = [this](Character key) { controller_.handleKeyDown(key); },
        .onKeyUp = [this](Character key) { controller_.handleKeyUp(key); },
        .onRecordedHotkey =
            [this](const std::string& text, std::int64_t keyCode, HotkeyModifiers modifiers) {
                globalPlay_.setGlobalPlayHotkey(text, keyCode, modifiers);
            },
        .onHotkey = [this] { globalPlay_.toggleGlobalPlay(); },
        .onFocusChanged = [this](bool isFocused) { controller_.setFocused(isFocused); },
    });
    return true;
}

bool MainWindowLoader::selfTest() {
    const auto problems = SceneSelfTest::problems(initialProperties());
    for (const auto& problem : problems) {
        qCritical("%s", qUtf8Printable(problem));
    }
    return problems.isEmpty();
}

} // namespace tavro
