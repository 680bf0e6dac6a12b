import QtQuick
import Tavro

// The product mark, the presets, where the notes go, whether Global Play is on, help, the menu, and the stop
// button.
Item {
    id: root

    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay
    required property PresetPresenter presets
    required property MainMenuPresenter menu
    signal helpWanted

    implicitHeight: 40

    Text {
        id: mark

        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("TAVRO")
        color: Theme.text
        font.pixelSize: 29
        font.weight: Font.Bold
        font.letterSpacing: 2
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Picker {
        id: presetPicker

        x: 152
        anchors.verticalCenter: parent.verticalCenter
        width: 260
        implicitHeight: 40
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
        id: loadButton

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

    Row {
        anchors.right: buttons.left
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        StatusPill {
            id: outputPill

            text: root.output.summary
            tip: root.output.periodText
            dot: root.output.isUnavailable ? Theme.stop : root.output.isUnheard ? Theme.quietText : Theme.accent
            maximumWidth: buttons.x - 12 - 8 - globalPill.width - loadButton.x - loadButton.width - 24
        }

        StatusPill {
            id: globalPill

            text: root.globalPlay.summary
            dot: root.globalPlay.isOn ? Theme.accent : Theme.quietText
        }
    }

    Row {
        id: buttons

        anchors.right: parent.right
        spacing: 8

        IconButton {
            label: qsTr("Help")
            symbol: "questionmark.circle.fill"
            onClicked: root.helpWanted()
        }

        MainMenuButton {
            menu: root.menu
        }

        StopButton {
            onClicked: root.output.stopAllNotes()
        }
    }
}
