import QtQuick
import Tavro

// The performance surface, from the header to the settings.
Item {
    id: root

    required property PerformanceSettings settings
    required property KeyboardGridModel grid
    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    // With one property, isEnabled.
    required property QtObject launchAtLogin
    required property PresetPresenter presets
    required property PickerChoices pickerChoices
    readonly property int designWidth: 1280
    readonly property int designHeight: 857

    width: designWidth
    height: designHeight
    focus: true

    KeyboardEventMonitor {
        layoutKind: root.settings.keyboardLayout
        hotkey: root.globalPlay.hotkey
        hotkeyKeyCode: root.globalPlay.hotkeyKeyCode
        hotkeyModifiers: root.globalPlay.hotkeyModifiers
        isRecordingHotkey: root.globalPlay.isRecordingHotkey
    }

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

    Item {
        id: surface

        anchors.fill: parent

        HeaderBar {
            id: header

            output: root.output
            globalPlay: root.globalPlay
            presets: root.presets
            x: Theme.margin
            y: 16
            width: parent.width - 2 * Theme.margin
        }

        Row {
            id: firstRow

            x: Theme.margin
            y: 68
            spacing: Theme.gap

            ControlTile {
                title: qsTr("Root")
                width: 150

                Picker {
                    anchors.fill: parent
                    label: qsTr("Root")
                    choices: root.pickerChoices.roots
                    value: root.settings.rootSemitone
                    onChosen: value => root.settings.rootSemitone = value
                }
            }

            ControlTile {
                title: qsTr("Scale")
                width: 196

                Picker {
                    anchors.fill: parent
                    label: qsTr("Scale")
                    choices: root.pickerChoices.scales
                    value: root.settings.scaleName
                    onChosen: value => root.settings.scaleName = value
                }
            }

            SliderTile {
                title: qsTr("Octave")
                width: 184
                isCentered: true
                from: -3
                to: 3
                value: root.settings.globalOctaveOffset
                onChosen: value => root.settings.globalOctaveOffset = value
            }

            ControlTile {
                title: qsTr("Chord")
                width: 170

                TogglePill {
                    id: chordSwitch

                    anchors.verticalCenter: parent.verticalCenter
                    label: qsTr("Chord")
                    isOn: root.settings.chordEnabled
                    onToggledTo: isOn => root.settings.chordEnabled = isOn
                }

                Text {
                    anchors.left: chordSwitch.right
                    anchors.leftMargin: 12
                    anchors.verticalCenter: parent.verticalCenter
                    text: root.settings.chordMode
                    color: root.settings.chordEnabled ? Theme.text : Theme.secondaryText
                    font.pixelSize: Theme.controlSize
                }
            }

            SliderTile {
                title: qsTr("Velocity")
                width: 236
                from: 1
                to: 127
                defaultValue: 100
                value: root.settings.velocity
                onChosen: value => root.settings.velocity = value
            }

            SliderTile {
                title: qsTr("Humanize")
                width: 236
                from: 0
                to: 30
                defaultValue: 7
                value: root.settings.humanizeVelocity
                onChosen: value => root.settings.humanizeVelocity = value
            }
        }

        Row {
            id: secondRow

            x: Theme.margin
            anchors.top: firstRow.bottom
            anchors.topMargin: Theme.gap
            spacing: Theme.gap

            SliderTile {
                title: qsTr("Chord Complexity")
                width: 304
                from: 0
                to: 100
                value: root.settings.chordComplexity
                onChosen: value => root.settings.chordComplexity = value
            }

            SliderTile {
                title: qsTr("Note Limit")
                width: 232
                from: 0
                to: 16
                defaultValue: 8
                zeroText: qsTr("Off")
                value: root.settings.maxChordNotes
                onChosen: value => root.settings.maxChordNotes = value
            }

            SliderTile {
                title: qsTr("Strum")
                width: 270
                isCentered: true
                from: -50
                to: 50
                suffix: qsTr(" ms")
                value: root.settings.strumMilliseconds
                onChosen: value => root.settings.strumMilliseconds = value
            }

            ControlTile {
                title: qsTr("Split Mode")
                width: 142

                TogglePill {
                    anchors.verticalCenter: parent.verticalCenter
                    label: qsTr("Split Mode")
                    isOn: root.settings.splitMode
                    onToggledTo: isOn => root.settings.splitMode = isOn
                }
            }

            SliderTile {
                title: qsTr("Melody Octave")
                width: 236
                isCentered: true
                from: -3
                to: 3
                value: root.settings.melodyOctaveOffset
                onChosen: value => root.settings.melodyOctaveOffset = value
            }
        }

        Row {
            id: thirdRow

            x: Theme.margin
            anchors.top: secondRow.bottom
            anchors.topMargin: Theme.gap
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
            id: keyboard

            grid: root.grid
            statusText: root.output.statusText
            x: Theme.margin
            width: parent.width - 2 * Theme.margin
            anchors.top: thirdRow.bottom
            anchors.topMargin: Theme.gap
            onKeyTouched: root.forceActiveFocus()
        }

        SettingsPanel {
            settings: root.settings
            output: root.output
            globalPlay: root.globalPlay
            launchAtLogin: root.launchAtLogin
            pickerChoices: root.pickerChoices
            x: Theme.margin
            width: parent.width - 2 * Theme.margin
            anchors.top: keyboard.bottom
            anchors.topMargin: Theme.gap
        }
    }
}
