import QtQuick
import Tavro

// What sounds: the chord's name over the keys, what was sent last, and what to do when nobody can hear it.
Rectangle {
    id: root

    required property KeyboardGridModel grid
    property string statusText
    property string hint
    signal keyTouched

    implicitHeight: 381
    radius: Theme.tileRadius
    color: Theme.bed
    border.width: 1
    border.color: Theme.hairline

    Text {
        id: chord

        x: 24
        y: 11
        width: Math.min(implicitWidth, 560)
        text: root.grid.chordText
        textFormat: Text.PlainText
        elide: Text.ElideRight
        color: root.grid.isSounding ? Theme.accent : Theme.quietText
        font.pixelSize: Theme.chordSize
        font.weight: Font.Bold
        Accessible.role: Accessible.StaticText
        Accessible.name: qsTr("Chord: %1").arg(root.grid.chordText)
    }

    Item {
        id: notices

        anchors.left: chord.right
        anchors.leftMargin: 40
        anchors.right: parent.right
        anchors.rightMargin: 24
        y: 0
        height: 76

        Column {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            spacing: 6

            Item {
                visible: root.hint.length > 0
                width: parent.width
                height: 20

                Symbol {
                    anchors.right: hint.left
                    anchors.rightMargin: 8
                    anchors.verticalCenter: parent.verticalCenter
                    width: 18
                    height: 18
                    name: "exclamationmark.triangle"
                    color: Theme.text
                }

                Text {
                    id: hint

                    anchors.right: parent.right
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.min(implicitWidth, parent.width - 26)
                    text: root.hint
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    color: Theme.text
                    font.pixelSize: Theme.secondarySize
                    Accessible.role: Accessible.StaticText
                    Accessible.name: text
                }
            }

            Text {
                width: parent.width
                horizontalAlignment: Text.AlignRight
                text: root.statusText
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.secondaryText
                font.pixelSize: Theme.secondarySize
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }
    }

    KeyboardGridView {
        grid: root.grid
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 17
        onKeyTouched: root.keyTouched()
    }
}
