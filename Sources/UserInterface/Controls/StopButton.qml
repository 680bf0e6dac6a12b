import QtQuick
import QtQuick.Templates as T
import Tavro

// Ends everything that sounds.
T.AbstractButton {
    id: root

    implicitWidth: 40
    implicitHeight: 40
    hoverEnabled: true
    focusPolicy: Qt.ClickFocus
    Accessible.role: Accessible.Button
    Accessible.name: qsTr("Stop all notes")

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down ? Theme.stopLine : Theme.stopFill
        border.width: 1
        border.color: root.hovered ? Theme.stop : Theme.stopLine

        Symbol {
            anchors.centerIn: parent
            width: 24
            height: 24
            name: "stop.circle.fill"
            color: Theme.stop
        }
    }

    HelpTip {
        text: root.Accessible.name
        isWanted: root.hovered && !root.down
        delay: 700
    }
}
