import QtQuick
import Tavro

// The two ways of holding notes after their keys were released.
Rectangle {
    id: root

    property bool hold: false
    property bool smartHold: false
    signal holdChosen(bool isOn)
    signal smartHoldChosen(bool isOn)

    implicitHeight: 56
    radius: Theme.tileRadius
    color: Theme.panel
    border.width: 1
    border.color: Theme.hairline

    Text {
        x: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("Hold / Smart Hold")
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: Theme.padding
        anchors.verticalCenter: parent.verticalCenter
        spacing: 14

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Hold")
            color: Theme.text
            font.pixelSize: Theme.controlSize
        }

        TogglePill {
            label: qsTr("Hold")
            isOn: root.hold
            onToggledTo: isOn => root.holdChosen(isOn)
        }

        Item {
            width: 20
            height: 1
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: qsTr("Smart Hold")
            color: Theme.text
            font.pixelSize: Theme.controlSize
        }

        TogglePill {
            label: qsTr("Smart Hold")
            isOn: root.smartHold
            onToggledTo: isOn => root.smartHoldChosen(isOn)
        }
    }
}
