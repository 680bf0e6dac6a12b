import QtQuick
import QtQuick.Templates as T
import Tavro

// Asks for the next key: a red point in a ring, filled while it waits.
T.AbstractButton {
    id: root

    property bool isRecording: false

    implicitWidth: 38
    implicitHeight: 38
    focusPolicy: Qt.ClickFocus
    Accessible.role: Accessible.Button
    Accessible.name: isRecording ? qsTr("Stop recording the hotkey") : qsTr("Record a hotkey")

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.isRecording ? Theme.stopFill : Theme.inset
        border.width: 1
        border.color: root.isRecording ? Theme.stopLine : Theme.strongHairline

        Rectangle {
            anchors.centerIn: parent
            width: 20
            height: 20
            radius: 10
            color: "transparent"
            border.width: 2
            border.color: root.isRecording ? Theme.stop : Theme.secondaryText

            Rectangle {
                anchors.centerIn: parent
                width: 10
                height: 10
                radius: 5
                color: Theme.stop
            }
        }
    }
}
