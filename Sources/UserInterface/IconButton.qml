import QtQuick
import QtQuick.Templates as T
import Tavro

// A button with a drawing of its own.
T.AbstractButton {
    id: root

    property string label
    property url symbol

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

        Image {
            anchors.centerIn: parent
            width: 20
            height: 20
            source: root.symbol
            // Rendered at the size at which it is shown, so that it is sharp on every screen.
            sourceSize: Qt.size(40, 40)
            smooth: true
        }
    }
}
