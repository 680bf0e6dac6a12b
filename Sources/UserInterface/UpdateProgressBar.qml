import QtQuick
import Tavro

// How much of a download has arrived. While that is not known the whole bar is of a quiet tone, and the text
// alone tells that something comes.
Item {
    id: root

    // 0 to 1; negative while it is not known.
    property real progress: -1
    property string text
    readonly property bool isKnown: progress >= 0

    implicitHeight: label.visible ? 22 : 6
    // Not the role of a progress bar: the toolkit gives that no value, so that a reader would tell of one without.
    Accessible.role: Accessible.StaticText
    Accessible.name: text !== "" ? text : qsTr("Download")

    Rectangle {
        width: parent.width
        height: 6
        radius: 3
        color: root.isKnown ? Theme.inset : Theme.litFill

        Rectangle {
            objectName: "filled"
            height: parent.height
            radius: parent.radius
            color: Theme.accent
            visible: root.isKnown
            width: parent.width * Math.max(0, Math.min(1, root.progress))
        }
    }

    Text {
        id: label

        anchors.right: parent.right
        y: 9
        visible: text !== ""
        text: root.text
        textFormat: Text.PlainText
        color: Theme.secondaryText
        font.pixelSize: 12
    }
}
