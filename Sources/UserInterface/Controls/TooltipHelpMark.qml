import QtQuick
import QtQuick.Templates as T
import Tavro

// A question mark that tells what the control beside it does, while the pointer rests on it or after a tap.
T.AbstractButton {
    id: root

    property string help
    property string title
    readonly property alias isHovering: root.hovered

    implicitWidth: 18
    implicitHeight: 18
    hoverEnabled: true
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.HelpBalloon
    Accessible.name: qsTr("About %1").arg(title)
    Accessible.description: help

    contentItem: Symbol {
        name: "questionmark.circle"
        color: root.isHovering ? Theme.text : Theme.quietText
    }

    HelpTip {
        text: root.help
        isWanted: root.isHovering || root.down
    }
}
