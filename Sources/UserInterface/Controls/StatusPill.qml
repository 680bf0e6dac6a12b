import QtQuick
import Tavro

// One short fact in a rounded frame, with a dot in the colour of how it stands.
Rectangle {
    id: root

    property string text
    property color dot: Theme.quietText
    property real maximumWidth: 400
    // More of it, while the pointer is over it.
    property string tip

    implicitWidth: Math.min(maximumWidth, Math.ceil(label.implicitWidth) + 43)
    implicitHeight: 32
    radius: height / 2
    color: Theme.panel
    border.width: 1
    border.color: Theme.strongHairline
    Accessible.role: Accessible.StaticText
    Accessible.name: text
    Accessible.description: tip

    HoverHandler {
        id: hover
    }

    HelpTip {
        text: root.tip
        isWanted: hover.hovered
    }

    Rectangle {
        x: 13
        anchors.verticalCenter: parent.verticalCenter
        width: 8
        height: 8
        radius: 4
        color: root.dot
    }

    Text {
        id: label

        x: 29
        width: parent.width - 43
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        Accessible.ignored: true
    }
}
