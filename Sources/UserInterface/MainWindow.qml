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
    required property PickerChoices pickerChoices

    title: qsTr("TAVRO")
    color: Theme.surface
    width: 1280
    height: Math.min(content.designHeight, Math.max(minimumHeight, Screen.desktopAvailableHeight - 40))
    minimumWidth: 720
    minimumHeight: 520

    ContentView {
        id: content

        settings: window.settings
        grid: window.grid
        output: window.output
        globalPlay: window.globalPlay
        pickerChoices: window.pickerChoices
        // Drawn at one size and scaled as a whole, so that every proportion stays as it is.
        scale: Math.min(window.width / width, window.height / height)
        anchors.centerIn: parent
    }
}
