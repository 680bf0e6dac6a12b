#include "ApplicationShell/AppMainComposition.h"

namespace tavro {

AppMainComposition::AppMainComposition(const AppMainAdapters& adapters, MainActor& mainActor)
    : preferences(*adapters.userDefaults, *adapters.bootClock),
      presetStore(*adapters.userDefaults, preferences),
      selection(PresetSelection::load(presetStore, preferences)),
      loginItem(*adapters.loginItemService, *adapters.userDefaults, preferences),
      midi(*adapters.midiSystem, mainActor), controller(midi, mainActor, selection.initialPreset().state),
      globalKeyboard(*adapters.keyboardTap, mainActor),
      globalPlay(controller, globalKeyboard, preferences, AppMainAdapters::modifierNaming()),
      presets(controller, presetStore, *adapters.userDefaults, *adapters.systemBeep, selection),
      launchAtLogin(loginItem), window({.controller = controller,
                                        .midi = midi,
                                        .globalPlay = globalPlay,
                                        .presets = presets,
                                        .launchAtLogin = launchAtLogin,
                                        .translator = *adapters.keyEventTranslator}) {
    globalPlay.configureGlobalKeyboard();
}

} // namespace tavro
