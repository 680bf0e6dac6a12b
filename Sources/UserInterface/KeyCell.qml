import QtQuick
import Tavro

// One key: its letter, and what it plays. Pressed, it is filled and dark on bright; lit, it is framed and
// bright on dark, so that the two differ without their colour too.
Item {
    id: root

    property string label
    // The note, or the lowest note of the chord.
    property string note
    // The chord's own name; empty for a single note.
    property string chord
    property bool isMelody: false
    property bool isActive: false
    property bool isPressed: false
    signal press
    signal release

    implicitWidth: 76
    implicitHeight: 66
    Accessible.role: Accessible.Button
    Accessible.name: chord.length > 0 ? qsTr("%1: %2, from %3").arg(label).arg(chord).arg(note) : qsTr("%1: %2").arg(label).arg(note)
    Accessible.checkable: true
    Accessible.checked: isPressed
    Accessible.onPressAction: {
        press()
        release()
    }

    Rectangle {
        id: cap

        anchors.fill: parent
        radius: Theme.keyRadius
        color: root.isPressed ? Theme.accent : root.isActive ? Theme.litFill : root.isMelody ? Theme.melodyFill : Theme.inset
        border.width: root.isPressed ? 0 : root.isActive ? 2 : 1
        border.color: root.isActive ? Theme.accent : root.isMelody ? Theme.melodyLine : Theme.strongHairline
    }

    Text {
        x: 10
        y: 6
        text: root.label
        color: root.isPressed ? Theme.accentLetter : root.isActive ? Theme.accent : Theme.text
        font.pixelSize: Theme.keySize
        font.weight: Font.DemiBold
    }

    // A single note stands in the corner; above a chord's name there is its lowest note.
    Text {
        anchors.right: parent.right
        anchors.rightMargin: 9
        y: root.chord.length > 0 ? 11 : parent.height - height - 7
        text: root.note
        color: root.isPressed ? Theme.accentLetter : root.isActive ? Theme.text : root.isMelody ? Theme.melody : Theme.secondaryText
        font.pixelSize: Theme.secondarySize
    }

    Text {
        x: 8
        width: parent.width - 17
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 7
        horizontalAlignment: Text.AlignRight
        text: root.chord
        elide: Text.ElideRight
        color: root.isPressed ? Theme.accentLetter : Theme.text
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }
}
