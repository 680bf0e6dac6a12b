#pragma once

#include "ApplicationShell/LaunchAtLogin.h"
#include "ApplicationShell/MainMenu.h"
#include "Concurrency/VirtualMainActor.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Performance/GlobalPlay.h"
#include "Performance/MidiSystemSetting.h"
#include "Performance/PerformanceController.h"
#include "Platform/Headless/ApplicationVisibilityAdapter.h"
#include "Platform/Headless/BootClockAdapter.h"
#include "Platform/Headless/KeyboardTapAdapter.h"
#include "Platform/Headless/LoginItemServiceAdapter.h"
#include "Platform/Headless/MidiSystemAdapter.h"
#include "Platform/Headless/UserDefaultsAdapter.h"
#include "Presets/PresetLibrary.h"
#include "UserInterface/FocusedTextField.h"
#include "UserInterface/MainWindowLoader.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tavro {

/// An instrument that reaches nobody and whose time stands still. Every velocity is 100.
class Instrument {
public:
    explicit Instrument(PerformanceState initialState = {}) : controller(midi, actor, even(initialState)) {
        tap.answersCreated = true;
        globalPlay.configureGlobalKeyboard();
    }

    /// The messages since the last call.
    std::vector<std::vector<std::uint8_t>> takeMessages() {
        std::vector<std::vector<std::uint8_t>> taken;
        for (const auto& message : system.messages) {
            taken.push_back(message.bytes);
        }
        system.messages.clear();
        return taken;
    }

    /// For a window over it.
    MainWindowLoader::Shell shell(const KeyEventTranslator& translator) {
        return {.controller = controller,
                .midi = midi,
                .midiSystem = midiSystem,
                .globalPlay = globalPlay,
                .presets = presets,
                .launchAtLogin = launchAtLogin,
                .translator = translator,
                .pressedKeys = pressedKeys,
                .defaults = defaults,
                .mainActor = actor,
                .keyboardAccess = KeyboardAccess::displayOrInputDevices,
                .menu = menu,
                .menuIsInWindow = true};
    }

    VirtualMainActor actor;
    headless::MidiSystemAdapter system;
    headless::UserDefaultsAdapter defaults;
    headless::BootClockAdapter bootClock;
    Preferences preferences{defaults, bootClock};
    MidiSystemSetting midiSystem{midiSystems(), preferences, {}, actor};
    MidiOutputManager midi{system, actor};
    PerformanceController controller;
    headless::KeyboardTapAdapter tap;
    std::shared_ptr<PressedKeys> pressedKeys = std::make_shared<PressedKeys>();
    GlobalKeyboardController globalKeyboard{tap, actor, pressedKeys};
    GlobalPlay globalPlay{controller, globalKeyboard, preferences, ModifierNaming::words};
    PresetStore presetStore{defaults, preferences};
    PresetLibrary presets{controller, presetStore, defaults, [] {}, {}};
    headless::LoginItemServiceAdapter loginItemService;
    LoginItemController loginItem{loginItemService, defaults, preferences};
    LaunchAtLogin launchAtLogin{loginItem};
    headless::ApplicationVisibilityAdapter visibility;
    FocusedTextField textEditing;
    /// What the menu did to the program and its windows.
    std::vector<std::string> menuCalls;
    MainMenu menu{visibility,
                  textEditing,
                  {.checkForUpdates = {},
                   .quit = [this] { menuCalls.emplace_back("quit"); },
                   .closeWindow = [this] { menuCalls.emplace_back("close"); },
                   .minimizeWindow = [this] { menuCalls.emplace_back("minimize"); }}};

private:
    /// The second one sends what it is given to nobody either, and works in periods.
    static MidiSystemTable midiSystems() {
        const auto maker = [](std::optional<MidiPeriod> period) {
            return [period](MainActor&, const MidiSystemOptions&) {
                auto made = std::make_unique<headless::MidiSystemAdapter>();
                made->periodInForce = period;
                return made;
            };
        };
        return MidiSystemTable({{QStringLiteral("alsa"), QStringLiteral("ALSA"), maker(std::nullopt)},
                                {QStringLiteral("jack"), QStringLiteral("JACK"),
                                 maker(MidiPeriod{.frames = 128, .rate = 48000}), true}});
    }

    static PerformanceState even(PerformanceState state) {
        state.humanizeVelocity = 0;
        return state;
    }
};

} // namespace tavro
