import QtQuick
import QtQuick.Templates as T
import Tavro

// Ends everything that sounds.
T.AbstractButton {
    id: root

    implicitWidth: 40
    implicitHeight: 40
    focusPolicy: Qt.ClickFocus
    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Stop all notes")

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down ? Theme.stopLine : Theme.stopFill
        border.width: 1
        border.color: Theme.stopLine

        Rectangle {
            anchors.centerIn: parent
            width: 14
            height: 14
            radius: 2
            color: Theme.stop
        }
    }
}
