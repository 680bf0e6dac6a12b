import QtQuick
import Tavro

// What sounds: the chord's name over the keys, and what was sent last.
Rectangle {
    id: root

    required property KeyboardGridModel grid
    property string statusText
    signal keyTouched

    implicitHeight: 372
    radius: Theme.tileRadius
    color: Theme.bed
    border.width: 1
    border.color: Theme.hairline

    Text {
        id: chord

        x: 24
        y: 7
        width: 720
        text: root.grid.chordText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: root.grid.isSounding ? Theme.accent : Theme.quietText
        font.pixelSize: Theme.chordSize
        font.weight: Font.Bold
        Accessible.role: Accessible.StaticText
        Accessible.name: qsTr("Chord: %1").arg(root.grid.chordText)
    }

    Text {
        anchors.right: parent.right
        anchors.rightMargin: 24
        anchors.left: chord.right
        anchors.leftMargin: 24
        anchors.verticalCenter: chord.verticalCenter
        horizontalAlignment: Text.AlignRight
        text: root.statusText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
    }

    KeyboardGridView {
        grid: root.grid
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 20
        onKeyTouched: root.keyTouched()
    }
}
