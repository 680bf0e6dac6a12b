import QtQuick
import QtQuick.Templates as T
import Tavro

// Asks for the next key, and shows while it waits.
T.AbstractButton {
    id: root

    property bool isRecording: false

    implicitWidth: 38
    implicitHeight: 38
    hoverEnabled: true
    focusPolicy: Qt.ClickFocus
    Accessible.role: Accessible.Button
    Accessible.name: isRecording ? qsTr("Stop recording the hotkey") : qsTr("Record a hotkey")

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.isRecording ? Theme.stopFill : root.down || root.hovered ? Theme.raised : Theme.inset
        border.width: 1
        border.color: root.isRecording ? Theme.stop : Theme.strongHairline

        Symbol {
            anchors.centerIn: parent
            width: 20
            height: 20
            name: "record.circle.fill"
            color: Theme.stop
        }
    }

    HelpTip {
        text: root.Accessible.name
        isWanted: root.hovered && !root.down
        delay: 700
    }
}
