#pragma once

#include "ApplicationShell/GlobalPlay.h"
#include "ApplicationShell/PerformanceController.h"
#include "KeyboardInput/KeyEventTranslator.h"
#include "MidiOutput/MidiOutputManager.h"
#include "UserInterface/GlobalPlayPresenter.h"
#include "UserInterface/KeyboardGridModel.h"
#include "UserInterface/MidiOutputPresenter.h"
#include "UserInterface/PerformanceSettings.h"
#include "UserInterface/PickerChoices.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QVariantMap>

namespace tavro {

/// Owns the scene: what it shows, the engine that it runs in, and the way of the keys from the window to the
/// controller. One per program, after the application object.
class MainWindowLoader {
public:
    /// All of them must outlive this.
    MainWindowLoader(PerformanceController& controller, MidiOutputManager& midi, GlobalPlay& globalPlay,
                     const KeyEventTranslator& translator);

    /// Creates the main window and shows it. False when it cannot be created; the reasons went to the error
    /// output.
    [[nodiscard]] bool load();

    /// Null before `load` and after a failed one.
    [[nodiscard]] QQuickWindow* window() const;

    /// Compiles and creates every component of the scene's module, without showing a window. True when
    /// nothing was wrong, a warning at run time included; else each went to the error output, with its file's
    /// name.
    [[nodiscard]] bool selfTest();

private:
    [[nodiscard]] QVariantMap initialProperties();
    [[nodiscard]] bool connectKeys(QQuickWindow& window);

    PerformanceController& controller_;
    GlobalPlay& globalPlay_;
    const KeyEventTranslator& translator_;
    PerformanceSettings settings_;
    KeyboardGridModel grid_;
    MidiOutputPresenter output_;
    GlobalPlayPresenter globalPlayShown_;
    PickerChoices choices_;
    // Last, so that the scene is gone before what it shows.
    QQmlApplicationEngine engine_;
};

} // namespace tavro
