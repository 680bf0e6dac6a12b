import QtQuick
import Tavro

// The product mark, the presets, whether Global Play is on, where the notes go, and the stop button.
Item {
    id: root

    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    required property PresetPresenter presets

    implicitHeight: 40

    Text {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("TAVRO")
        color: Theme.text
        font.pixelSize: 29
        font.weight: Font.Bold
        font.letterSpacing: 2
    }

    Picker {
        id: presetPicker

        anchors.left: mark.right
        anchors.leftMargin: 28
        anchors.verticalCenter: parent.verticalCenter
        width: 232
        label: qsTr("Preset")
        choices: root.presets.presets
        value: root.presets.selected
        onChosen: value => root.presets.selected = value
    }

    IconButton {
        id: saveButton

        anchors.left: presetPicker.right
        anchors.leftMargin: 8
        label: qsTr("Save preset")
        symbol: "square.and.arrow.down"
        onClicked: dialogs.save()
    }

    IconButton {
        anchors.left: saveButton.right
        anchors.leftMargin: 8
        label: qsTr("Load preset")
        symbol: "arrow.down.circle"
        onClicked: dialogs.load()
    }

    PresetDialogs {
        id: dialogs

        presets: root.presets
    }

    StatusPill {
        anchors.right: outputPill.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.globalPlay.summary
        dot: root.globalPlay.isOn ? Theme.accent : Theme.quietText
    }

    StatusPill {
        id: outputPill

        anchors.right: stopButton.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.output.summary
        dot: root.output.isUnavailable ? Theme.stop : root.output.isUnheard ? Theme.quietText : Theme.accent
    }

    StopButton {
        id: stopButton

        anchors.right: parent.right
        onClicked: root.output.stopAllNotes()
    }
}
