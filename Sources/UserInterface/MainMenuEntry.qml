import QtQuick
import Tavro

// One line of the menu: a heading, something to choose with its shortcut, or a line between groups.
Item {
    id: root

    // Of MainMenuPresenter.
    property var entry: ({ kind: "separator", text: "", shortcut: "", isEnabled: false })
    property bool isFirst: false
    property bool isCurrent: false
    readonly property bool isHeading: entry.kind === "heading"
    readonly property bool isSeparator: entry.kind === "separator"
    // By the pointer; a list that opens below one that rests has not been pointed at.
    signal pointedAt
    signal clicked

    implicitHeight: isSeparator ? 9 : isHeading && !isFirst ? 36 : 28
    enabled: entry.isEnabled
    Accessible.role: isSeparator ? Accessible.Separator : isHeading ? Accessible.StaticText : Accessible.MenuItem
    Accessible.name: isSeparator ? qsTr("Separator") : entry.text
    Accessible.description: entry.shortcut
    Accessible.onPressAction: root.clicked()

    Rectangle {
        anchors.fill: parent
        visible: root.isCurrent
        radius: 6
        color: Theme.raised
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        visible: root.isSeparator
        x: 10
        width: parent.width - 20
        height: 1
        color: Theme.strongHairline
    }

    Text {
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.bottom: parent.bottom
        height: Math.min(parent.height, 28)
        visible: !root.isSeparator
        text: root.entry.text
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        color: root.isHeading ? Theme.secondaryText : root.enabled ? Theme.text : Theme.quietText
        font.pixelSize: root.isHeading ? Theme.secondarySize : Theme.controlSize
        font.weight: root.isHeading ? Font.DemiBold : Font.Normal
    }

    Text {
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.bottom: parent.bottom
        height: Math.min(parent.height, 28)
        visible: !root.isSeparator
        text: root.entry.shortcut
        textFormat: Text.PlainText
        verticalAlignment: Text.AlignVCenter
        color: root.enabled ? Theme.secondaryText : Theme.quietText
        font.pixelSize: Theme.secondarySize
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        onPositionChanged: root.pointedAt()
        onClicked: root.clicked()
    }
}
