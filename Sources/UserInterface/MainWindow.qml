import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

T.ApplicationWindow {
    id: window

    required property PerformanceSettings settings
    required property KeyboardGridModel grid
    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    // With isEnabled and note.
    required property QtObject launchAtLogin
    required property PresetPresenter presets
    required property PickerChoices pickerChoices
    required property TutorialPresenter tutorial
    required property WindowPanels panels
    required property MainMenuPresenter menu

    title: qsTr("TAVRO")
    color: Theme.surface
    // For what is not ours: the file dialogs, where the desktop has none of its own.
    palette {
        window: Theme.panel
        windowText: Theme.text
        base: Theme.inset
        alternateBase: Theme.panel
        text: Theme.text
        button: Theme.raised
        buttonText: Theme.text
        brightText: Theme.text
        placeholderText: Theme.secondaryText
        light: Theme.raised
        midlight: Theme.raised
        mid: Theme.strongHairline
        dark: Theme.secondaryText
        shadow: Theme.surface
        highlight: Theme.litFill
        highlightedText: Theme.text
    }

    ContentView {
        id: content

        settings: window.settings
        grid: window.grid
        output: window.output
        globalPlay: window.globalPlay
        presets: window.presets
        launchAtLogin: window.launchAtLogin
        pickerChoices: window.pickerChoices
        tutorial: window.tutorial
        panels: window.panels
        menu: window.menu
        // Drawn at one size and scaled as a whole, so that every proportion stays as it is.
        scale: Math.min(window.width / width, window.height / height)
        anchors.centerIn: parent
    }

    TutorialSheet {
        tutorial: window.tutorial
    }
}
