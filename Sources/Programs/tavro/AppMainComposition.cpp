#include "Programs/tavro/AppMainComposition.h"

#include <QGuiApplication>
#include <QWindow>

namespace tavro {

namespace {

MainMenu::Actions menuActions(AppMainUpdates* updates) {
    return {.checkForUpdates = updates != nullptr
                                   ? std::function<void()>([updates] { updates->checkManually(); })
                                   : std::function<void()>(),
            .quit = &QGuiApplication::quit,
            .closeWindow =
                [] {
                    if (auto* window = QGuiApplication::focusWindow()) {
                        window->close();
                    }
                },
            .minimizeWindow =
                [] {
                    if (auto* window = QGuiApplication::focusWindow()) {
                        window->showMinimized();
                    }
                }};
}

} // namespace

AppMainComposition::AppMainComposition(const AppMainAdapters& adapters, MainActor& mainActor,
                                       const QString& midiSystemName)
    : preferences(*adapters.userDefaults, *adapters.bootClock),
      presetStore(*adapters.userDefaults, preferences),
      selection(PresetSelection::load(presetStore, preferences)),
      loginItem(*adapters.loginItemService, *adapters.userDefaults, preferences),
      midiSystem(adapters.midiSystems, preferences, midiSystemName, mainActor),
      midi(midiSystem.systems(), mainActor), controller(midi, mainActor, selection.initialPreset().state),
      globalKeyboard(*adapters.keyboardTap, mainActor, pressedKeys),
      globalPlay(controller, globalKeyboard, preferences, AppMainAdapters::modifierNaming()),
      guardLink(*adapters.guard, mainActor, midi),
      presets(controller, presetStore, *adapters.userDefaults, adapters.systemBeep, selection),
      launchAtLogin(loginItem), updates(AppMainUpdates::make(mainActor, &QGuiApplication::quit)),
      menu(*adapters.applicationVisibility, textEditing, menuActions(updates.get())),
      window({.controller = controller,
              .midi = midi,
              .midiSystem = midiSystem,
              .globalPlay = globalPlay,
              .presets = presets,
              .launchAtLogin = launchAtLogin,
              .translator = *adapters.keyEventTranslator,
              .pressedKeys = pressedKeys,
              .defaults = *adapters.userDefaults,
              .mainActor = mainActor,
              .keyboardAccess = AppMainAdapters::keyboardAccess(),
              .menu = menu,
              .menuIsInWindow = !adapters.menuBar->isThere()}),
      applicationWindow(window, *adapters.windowAspect),
      delegate(applicationWindow, preferences,
               {.installMainMenu = [this, &bar = *adapters.menuBar] { bar.install(menu); },
                .installIcon = &AppMainAdapters::installIcon,
                .endGlobalPlay = [this] { globalKeyboard.stop(); },
                .silence = [this] { controller.stopAllNotes(); },
                .silenceForGood = [this] { controller.shutDown(); },
                .startUpdates =
                    [this] {
                        if (updates != nullptr) {
                            updates->checkAutomatically();
                        }
                    }}) {
    globalPlay.configureGlobalKeyboard();
    connectGuard();
}

void AppMainComposition::tellGuard() {
    // With a tap at work even the hotkey alone, pressed while the program hangs, would hold the keyboard.
    guardLink.setBusy(globalKeyboard.isAvailable() || !controller.activeKeys().empty());
}

void AppMainComposition::connectGuard() {
    const auto tell = [this] { tellGuard(); };
    QObject::connect(&controller, &PerformanceController::keyboardDisplayChanged, &controller, tell);
    QObject::connect(&globalKeyboard, &GlobalKeyboardController::statusTextChanged, &controller, tell);
    guardLink.onDeeds = [this](const Guard::Deeds& /*deeds*/) {
        // Receivers are silent by now, or releases have gone by unseen.
        controller.panic();
    };
}

} // namespace tavro
