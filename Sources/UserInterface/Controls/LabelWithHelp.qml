import QtQuick
import Tavro

// The title of a control, with its help mark.
Row {
    id: root

    property string title
    property string help

    height: 20
    spacing: 7

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.title
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
        Accessible.role: Accessible.StaticText
        Accessible.name: root.title
    }

    TooltipHelpMark {
        anchors.verticalCenter: parent.verticalCenter
        visible: help.length > 0
        title: root.title
        help: root.help
    }
}
