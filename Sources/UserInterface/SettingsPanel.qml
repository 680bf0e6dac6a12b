import QtQuick
import Tavro

// Where the notes go, which keyboard they come from, and Global Play.
Rectangle {
    id: root

    required property PerformanceSettings settings
    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    // With one property, isEnabled.
    required property QtObject launchAtLogin
    required property PickerChoices pickerChoices

    implicitHeight: 112
    radius: Theme.tileRadius
    color: Theme.panel
    border.width: 1
    border.color: Theme.hairline

    component Label: Text {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }

    Item {
        id: routing

        x: Theme.padding
        y: 11
        width: parent.width - 2 * Theme.padding
        height: 38

        Label {
            id: outputLabel

            text: qsTr("MIDI Output")
        }

        Picker {
            anchors.left: outputLabel.right
            anchors.leftMargin: 14
            anchors.right: channelLabel.left
            anchors.rightMargin: 28
            anchors.verticalCenter: parent.verticalCenter
            label: outputLabel.text
            choices: root.output.destinations
            value: root.output.selectedDestination
            onOpening: root.output.refresh()
            onChosen: value => root.output.selectedDestination = value
        }

        Label {
            id: channelLabel

            anchors.right: channel.left
            anchors.rightMargin: 14
            text: qsTr("MIDI Channel")
        }

        Picker {
            id: channel

            anchors.right: layoutLabel.left
            anchors.rightMargin: 28
            anchors.verticalCenter: parent.verticalCenter
            width: 84
            label: channelLabel.text
            choices: root.pickerChoices.midiChannels
            value: root.settings.midiChannel
            onChosen: value => root.settings.midiChannel = value
        }

        Label {
            id: layoutLabel

            anchors.right: layout.left
            anchors.rightMargin: 14
            text: qsTr("Keyboard Layout")
        }

        Picker {
            id: layout

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: 204
            label: layoutLabel.text
            choices: root.pickerChoices.keyboardLayouts
            value: root.settings.keyboardLayout
            onChosen: value => root.settings.keyboardLayout = value
        }
    }

    AvailabilitySettings {
        globalPlay: root.globalPlay
        launchAtLogin: root.launchAtLogin
        x: Theme.padding
        anchors.top: routing.bottom
        anchors.topMargin: 14
        width: parent.width - 2 * Theme.padding
    }
}
