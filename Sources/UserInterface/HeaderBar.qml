import QtQuick
import Tavro

// The product mark, where the notes go, and the stop button.
Item {
    id: root

    required property MidiOutputPresenter output
    required property GlobalPlayPresenter globalPlay

    implicitHeight: 40

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: qsTr("TAVRO")
        color: Theme.text
        font.pixelSize: 29
        font.weight: Font.Bold
        font.letterSpacing: 2
    }

    StatusPill {
        anchors.right: outputPill.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.globalPlay.summary
        dot: root.globalPlay.isOn ? Theme.accent : Theme.quietText
    }

    StatusPill {
        id: outputPill

        anchors.right: stopButton.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: root.output.summary
        dot: root.output.isUnavailable ? Theme.stop : root.output.isUnheard ? Theme.quietText : Theme.accent
    }

    StopButton {
        id: stopButton

        anchors.right: parent.right
        onClicked: root.output.stopAllNotes()
    }
}
