import QtQuick
import Tavro

// A titled box around one control. The control stands at the same height in every tile.
Rectangle {
    id: root

    property string title
    default property alias content: content.data

    implicitHeight: 88
    radius: Theme.tileRadius
    color: Theme.panel
    border.width: 1
    border.color: Theme.hairline

    Text {
        x: Theme.padding
        y: 11
        width: parent.width - 2 * Theme.padding
        text: root.title
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }

    Item {
        id: content

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.leftMargin: Theme.padding
        anchors.rightMargin: Theme.padding
        anchors.bottomMargin: 11
        height: 38
    }
}
