import QtQuick
import Tavro

// How much of a download has arrived; while that is not known, only that it is under way.
Item {
    id: root

    // 0 to 1; negative while it is not known.
    property real progress: -1
    property string text

    implicitHeight: label.visible ? 22 : 6
    Accessible.role: Accessible.ProgressBar
    Accessible.name: text !== "" ? text : qsTr("Download")

    Rectangle {
        id: track

        width: parent.width
        height: 6
        radius: 3
        color: Theme.inset
        clip: true

        Rectangle {
            height: parent.height
            radius: parent.radius
            color: Theme.accent
            visible: root.progress >= 0
            width: parent.width * Math.max(0, Math.min(1, root.progress))
        }

        Rectangle {
            id: runner

            height: parent.height
            radius: parent.radius
            color: Theme.accent
            visible: root.progress < 0
            width: parent.width / 4

            NumberAnimation on x {
                from: -runner.width
                to: track.width
                duration: 1400
                loops: Animation.Infinite
                running: runner.visible && root.visible
            }
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
