import QtQuick
import Tavro

// The performance surface, from the header to the settings.
Item {
    id: root

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
    readonly property int designWidth: panels.surfaceWidth
    readonly property int designHeight: panels.preferredWindowHeight

    width: designWidth
    height: designHeight
    focus: true

    KeyboardEventMonitor {}

    // A preset file that is dropped on the window is loaded.
    DropArea {
        anchors.fill: parent
        keys: ["text/uri-list"]
        onDropped: drop => {
            if (drop.hasUrls && drop.urls.length === 1) {
                drop.acceptProposedAction()
                root.presets.openFile(drop.urls[0])
            }
        }
    }

    // A press beside every control ends the editing of a number.
    MouseArea {
        anchors.fill: parent
        onPressed: root.forceActiveFocus()
    }

    HeaderBar {
        id: header

        output: root.output
        globalPlay: root.globalPlay
        presets: root.presets
        menu: root.menu
        x: Theme.margin
        y: 20
        width: parent.width - 2 * Theme.margin
        onHelpWanted: root.tutorial.show()
    }

    Column {
        x: Theme.margin
        y: 84
        width: parent.width - 2 * Theme.margin
        spacing: Theme.gap

        PerformanceRow {
            settings: root.settings
            pickerChoices: root.pickerChoices
        }

        DisclosurePanel {
            width: parent.width
            title: qsTr("Advanced")
            summary: [qsTr("Complexity %1").arg(root.settings.chordComplexity), qsTr("Note limit %1").arg(root.settings.maxChordNotes > 0 ? root.settings.maxChordNotes : qsTr("off")), qsTr("Strum %1 ms").arg(root.settings.strumMilliseconds), root.settings.splitMode ? qsTr("Split on") : qsTr("Split off")].join(" · ")
            closedHeight: root.panels.advancedClosedHeight
            openHeight: root.panels.advancedOpenHeight
            isVisible: root.panels.isAdvancedVisible
            onToggledTo: isVisible => root.panels.isAdvancedVisible = isVisible

            AdvancedPerformanceTile {
                y: -3
                settings: root.settings
            }
        }

        Row {
            spacing: Theme.gap

            HoldModeTile {
                width: 610
                hold: root.settings.hold
                smartHold: root.settings.smartHold
                onHoldChosen: isOn => root.settings.hold = isOn
                onSmartHoldChosen: isOn => root.settings.smartHold = isOn
            }

            BassnoteTile {
                width: 610
                octaves: root.pickerChoices.bassOctaves
                isOn: root.settings.bassNoteEnabled
                octaveDown: root.settings.bassOctaveDown
                onToggledTo: isOn => root.settings.bassNoteEnabled = isOn
                onOctaveChosen: octaveDown => root.settings.bassOctaveDown = octaveDown
            }
        }

        KeyboardPanel {
            width: parent.width
            grid: root.grid
            statusText: root.output.statusText
            hint: root.output.hint
            onKeyTouched: root.forceActiveFocus()
        }

        SettingsPanel {
            width: parent.width
            settings: root.settings
            output: root.output
            globalPlay: root.globalPlay
            launchAtLogin: root.launchAtLogin
            pickerChoices: root.pickerChoices
            closedHeight: root.panels.settingsClosedHeight
            openHeight: root.panels.settingsOpenHeight
            isVisible: root.panels.isSettingsVisible
            onToggledTo: isVisible => root.panels.isSettingsVisible = isVisible
        }
    }
}
