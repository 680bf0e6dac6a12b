import QtQuick
import Tavro

// One short fact in a rounded frame, with a dot in the colour of how it stands.
Rectangle {
    id: root

    property string text
    property color dot: Theme.quietText
    property real maximumTextWidth: 360

    implicitWidth: label.x + label.width + 14
    implicitHeight: 32
    radius: height / 2
    color: Theme.panel
    border.width: 1
    border.color: Theme.strongHairline

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
        width: Math.min(implicitWidth, root.maximumTextWidth)
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
    }
}
