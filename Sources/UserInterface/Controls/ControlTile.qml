import QtQuick
import Tavro

// One control under its title. The control stands at the same height in every tile. A tile of its own has a
// frame; tiles that share one are told apart by dividers.
Item {
    id: root

    property string title
    property string help
    property bool hasFrame: true
    // At the right edge.
    property bool showsDivider: false
    default property alias content: content.data

    implicitHeight: Theme.tileHeight

    Rectangle {
        anchors.fill: parent
        visible: root.hasFrame
        radius: Theme.tileRadius
        color: Theme.panel
        border.width: 1
        border.color: Theme.hairline
    }

    Rectangle {
        visible: root.showsDivider
        anchors.right: parent.right
        y: 14
        width: 1
        height: parent.height - 28
        color: Theme.strongHairline
    }

    LabelWithHelp {
        x: Theme.padding
        y: 11
        title: root.title
        help: root.help
    }

    Item {
        id: content

        x: Theme.padding
        y: 41
        width: parent.width - 2 * Theme.padding
        height: Theme.controlHeight
    }
}
