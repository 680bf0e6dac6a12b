import QtQuick
import Tavro

// Where the notes go, which keyboard they come from, and how the program is at hand.
DisclosurePanel {
    id: root

    required property PerformanceSettings settings
    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    // With isEnabled and note.
    required property QtObject launchAtLogin
    required property PickerChoices pickerChoices
    // A single MIDI system leaves nothing to choose.
    readonly property bool choosesSystem: output.systems.length > 2
    readonly property var layoutEntry: pickerChoices.keyboardLayouts.find(entry => entry.value === settings.keyboardLayout)

    title: qsTr("Settings")
    summary: [output.selectedName, qsTr("Channel %1").arg(settings.midiChannel), layoutEntry ? layoutEntry.text : ""].join(" · ")

    Row {
        y: -8

        ControlTile {
            title: qsTr("MIDI Output")
            help: HelpTexts.midiOutput
            width: root.choosesSystem ? 232 : 270
            hasFrame: false
            showsDivider: true

            Picker {
                anchors.fill: parent
                label: qsTr("MIDI Output")
                choices: root.output.destinations
                value: root.output.selectedDestination
                onOpening: root.output.refresh()
                onChosen: value => root.output.selectedDestination = value
            }
        }

        ControlTile {
            title: qsTr("MIDI System")
            help: HelpTexts.midiSystem
            width: 204
            visible: root.choosesSystem
            hasFrame: false
            showsDivider: true

            Picker {
                anchors.fill: parent
                label: qsTr("MIDI System")
                choices: root.output.systems
                value: root.output.system
                onChosen: value => root.output.system = value
            }
        }

        ControlTile {
            title: qsTr("MIDI Channel")
            help: HelpTexts.midiChannel
            width: root.choosesSystem ? 130 : 158
            hasFrame: false
            showsDivider: true

            Picker {
                width: 84
                height: parent.height
                label: qsTr("MIDI Channel")
                choices: root.pickerChoices.midiChannels
                value: root.settings.midiChannel
                onChosen: value => root.settings.midiChannel = value
            }
        }

        ControlTile {
            title: qsTr("Keyboard Layout")
            help: HelpTexts.keyboardLayout
            width: 222
            hasFrame: false
            showsDivider: true

            Picker {
                anchors.fill: parent
                label: qsTr("Keyboard Layout")
                choices: root.pickerChoices.keyboardLayouts
                value: root.settings.keyboardLayout
                onChosen: value => root.settings.keyboardLayout = value
            }
        }

        ControlTile {
            title: qsTr("Global Play")
            help: HelpTexts.globalPlay
            width: root.choosesSystem ? 120 : 188
            hasFrame: false
            showsDivider: true

            TogglePill {
                id: globalPlaySwitch

                anchors.verticalCenter: parent.verticalCenter
                label: qsTr("Global Play")
                isOn: root.globalPlay.isOn
                onToggledTo: isOn => root.globalPlay.isOn = isOn
            }
        }

        ControlTile {
            title: qsTr("Global Play Hotkey")
            help: HelpTexts.globalPlayHotkey
            width: root.choosesSystem ? 172 : 232
            hasFrame: false
            showsDivider: true

            HotkeyField {
                anchors.fill: parent
                globalPlay: root.globalPlay
            }
        }

        ControlTile {
            title: qsTr("Launch at Login")
            help: [HelpTexts.launchAtLogin, root.launchAtLogin.note].join("\n").trim()
            width: root.choosesSystem ? 152 : 162
            hasFrame: false

            TogglePill {
                anchors.verticalCenter: parent.verticalCenter
                label: qsTr("Launch at Login")
                isOn: root.launchAtLogin.isEnabled
                onToggledTo: isOn => root.launchAtLogin.isEnabled = isOn
            }
        }
    }

    // How Global Play stands, what the user can do about it, and what the hotkey takes from him.
    Text {
        id: status

        x: Theme.padding
        y: 83
        width: Math.min(implicitWidth, parent.width / 2)
        text: root.globalPlay.statusText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.text
        font.pixelSize: Theme.secondarySize
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        anchors.left: status.right
        anchors.leftMargin: 12
        anchors.right: parent.right
        anchors.rightMargin: Theme.padding
        anchors.baseline: status.baseline
        text: [root.globalPlay.hotkeyWarning, root.globalPlay.advice].join(" ").trim()
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        Accessible.role: Accessible.StaticText
        Accessible.name: text
        Accessible.ignored: text.length === 0
    }
}
