import QtQuick
import Tavro

// The bass note, and how far down it lies.
Rectangle {
    id: root

    property bool isOn: false
    property int octaveDown: 1
    property var octaves: []
    signal toggledTo(bool isOn)
    signal octaveChosen(int octaveDown)

    implicitHeight: 56
    radius: Theme.tileRadius
    color: Theme.panel
    border.width: 1
    border.color: Theme.hairline

    Text {
        x: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Bassnote")
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 16

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
    }
}
