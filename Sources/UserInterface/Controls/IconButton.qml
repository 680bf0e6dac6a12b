import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

// A button with a drawing of its own.
T.AbstractButton {
    id: root

    property string label
    // The name of a drawing.
    property string symbol

    implicitWidth: 40
    implicitHeight: 40
    focusPolicy: Qt.ClickFocus
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: label

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down || root.hovered ? Theme.raised : Theme.panel
        border.width: 1
        border.color: Theme.strongHairline

        Symbol {
            anchors.centerIn: parent
            name: root.symbol
            color: Theme.text
        }
    }

    HelpTip {
        text: root.label
        isWanted: root.hovered && !root.down && root.Window.active
        delay: 700
    }
}
