#pragma once

#include "ApplicationShell/AppDelegate.h"
#include "ApplicationShell/LaunchAtLogin.h"
#include "ApplicationShell/LoginItemController.h"
#include "ApplicationShell/MainMenu.h"
#include "KeyboardInput/PressedKeys.h"
#include "MidiOutput/MidiOutputManager.h"
#include "Performance/GlobalKeyboardController.h"
#include "Performance/GlobalPlay.h"
#include "Performance/GuardLink.h"
#include "Performance/MidiSystemSetting.h"
#include "Performance/PerformanceController.h"
#include "Preferences/AppPreferences.h"
#include "Presets/PresetLibrary.h"
#include "Presets/PresetStore.h"
#include "Programs/tavro/AppMainAdapters.h"
#include "Programs/tavro/AppMainUpdates.h"
#include "UserInterface/FocusedTextField.h"
#include "UserInterface/MainQuickWindow.h"
#include "UserInterface/MainWindowLoader.h"

#include <memory>

namespace tavro {

/// Every long-lived object of the program, each behind those that it needs. The performance begins with the
/// chosen preset; the window is not shown yet.
struct AppMainComposition {
    /// Both must outlive this. The name of a MIDI system stands above the stored choice; empty is none.
    AppMainComposition(const AppMainAdapters& adapters, MainActor& mainActor,
                       const QString& midiSystemName = {});

    Preferences preferences;
    PresetStore presetStore;
    PresetSelection selection;
    LoginItemController loginItem;
    MidiSystemSetting midiSystem;
    MidiOutputManager midi;
    PerformanceController controller;
    /// The window's and the tap's.
    std::shared_ptr<PressedKeys> pressedKeys = std::make_shared<PressedKeys>();
    GlobalKeyboardController globalKeyboard;
    GlobalPlay globalPlay;
    GuardLink guardLink;
    PresetLibrary presets;
    LaunchAtLogin launchAtLogin;
    /// Null in a program that leaves updates to others.
    std::unique_ptr<AppMainUpdates> updates;
    FocusedTextField textEditing;
    MainMenu menu;
    MainWindowLoader window;
    MainQuickWindow applicationWindow;
    AppDelegate delegate;

    /// Tells the guard whether to wait for this program at the moment.
    void tellGuard();

private:
    void connectGuard();
};

} // namespace tavro
