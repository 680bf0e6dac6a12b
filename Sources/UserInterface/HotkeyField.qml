import QtQuick
import Tavro

// The hotkey of Global Play, and the button that records another one.
Item {
    id: root

    required property GlobalPlayPresenter globalPlay

    Rectangle {
        anchors.left: parent.left
        anchors.right: record.left
        anchors.rightMargin: 8
        height: parent.height
        radius: Theme.controlRadius
        color: Theme.inset
        border.width: 1
        border.color: root.globalPlay.isRecordingHotkey ? Theme.stop : Theme.strongHairline

        Text {
            anchors.fill: parent
            anchors.leftMargin: 10
            anchors.rightMargin: 10
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: root.globalPlay.isRecordingHotkey ? qsTr("Press a key") : root.globalPlay.displayedHotkey
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: Theme.text
            font.pixelSize: Theme.controlSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Global Play Hotkey: %1").arg(text)
        }
    }

    RecordButton {
        id: record

        anchors.right: parent.right
        isRecording: root.globalPlay.isRecordingHotkey
        onClicked: root.globalPlay.isRecordingHotkey = !isRecording
    }
}
