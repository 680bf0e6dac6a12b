import QtQuick
import Tavro

// The bass note, and how far down it lies.
ControlTile {
    id: root

    property bool isOn: false
    property int octaveDown: 0
    property var octaves: []
    signal toggledTo(bool isOn)
    signal octaveChosen(int octaveDown)

    title: qsTr("Bassnote")
    help: HelpTexts.bassnote

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 20

        TogglePill {
            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Bassnote")
            isOn: root.isOn
            onToggledTo: isOn => root.toggledTo(isOn)
        }

        SegmentedChoice {
            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Octaves below the root")
            choices: root.octaves
            value: root.octaveDown
            onChosen: value => root.octaveChosen(value)
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("octaves below")
            color: Theme.secondaryText
            font.pixelSize: Theme.controlSize
            Accessible.ignored: true
        }
    }
}
