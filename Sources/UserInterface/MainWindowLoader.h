#pragma once

#include "ApplicationShell/LaunchAtLogin.h"
#include "Concurrency/MainActor.h"
#include "KeyboardInput/KeyEventRouter.h"
#include "KeyboardInput/KeyboardAccess.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Performance/GlobalPlay.h"
#include "Performance/PerformanceController.h"
#include "PlatformInterfaces/Application/KeyEventTranslator.h"
#include "PlatformInterfaces/UserDefaults.h"
#include "Presets/PresetLibrary.h"
#include "UserInterface/GlobalPlayPresenter.h"
#include "UserInterface/KeyItems/KeyboardEventMonitor.h"
#include "UserInterface/KeyboardGridModel.h"
#include "UserInterface/MainMenuPresenter.h"
#include "UserInterface/MidiOutputPresenter.h"
#include "UserInterface/PerformanceSettings.h"
#include "UserInterface/PickerChoices.h"
#include "UserInterface/PresetPresenter.h"
#include "UserInterface/TutorialPresenter.h"
#include "UserInterface/WindowPanels.h"

#include <QPointer>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QVariantMap>

#include <memory>

namespace tavro {

/// Owns the scene: what it shows, the engine that it runs in, and the way of the keys from the window to the
/// controller. One per program, after the application object.
class MainWindowLoader {
public:
    /// What the window shows and works on. All of it must outlive the loader.
    struct Shell {
        PerformanceController& controller;
        MidiOutputManager& midi;
        MidiSystemSetting& midiSystem;
        GlobalPlay& globalPlay;
        PresetLibrary& presets;
        LaunchAtLogin& launchAtLogin;
        const KeyEventTranslator& translator;
        std::shared_ptr<PressedKeys> pressedKeys;
        UserDefaults& defaults;
        MainActor& mainActor;
        KeyboardAccess keyboardAccess;
        const MainMenu& menu;
        /// Whether the window shows the menu, because the system has no place for it.
        bool menuIsInWindow;
    };

    explicit MainWindowLoader(const Shell& shell);

    /// Creates the main window, hidden. False when it cannot be created; the reasons went to the error
    /// output.
    [[nodiscard]] bool create();

    /// Shows the created window in front of the others.
    void show();

    /// All of it: creates the window, shows it and brings the application to the front.
    [[nodiscard]] bool load();

    /// Null before `create` and after a failed one.
    [[nodiscard]] QQuickWindow* window() const;

    [[nodiscard]] const WindowPanels& panels() const { return panels_; }

    /// What the window's keys mean.
    [[nodiscard]] KeyEventRouter& router() { return router_; }

    /// Where the window's keys come in; null before `create` and after a failed one.
    [[nodiscard]] KeyboardEventMonitor* keys() const { return keys_; }

    /// Compiles and creates every component of the scene's module, without showing a window. True when
    /// nothing was wrong, a warning at run time included; else each went to the error output, with its file's
    /// name.
    [[nodiscard]] bool selfTest();

private:
    [[nodiscard]] QVariantMap initialProperties();
    void connectRouter();
    /// Nobody is to record a hotkey without seeing that he does.
    void endRecordingOutOfSight();

    Shell shell_;
    PerformanceSettings settings_;
    KeyboardGridModel grid_;
    MidiOutputPresenter output_;
    GlobalPlayPresenter globalPlay_;
    PresetPresenter presets_;
    PickerChoices choices_;
    TutorialPresenter tutorial_;
    WindowPanels panels_;
    MainMenuPresenter menu_;
    KeyEventRouter router_;
    /// Owned by the scene.
    QPointer<KeyboardEventMonitor> keys_;
    // Last, so that the scene is gone before what it shows.
    QQmlApplicationEngine engine_;
};

} // namespace tavro
