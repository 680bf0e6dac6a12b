import QtQuick
import Tavro

// One key. It plays while the mouse button that went down on it is held, wherever the mouse goes meanwhile.
Rectangle {
    id: root

    property string label
    property string note
    property bool isMelody: false
    property bool isHighlighted: false
    property bool isPressed: false
    signal press
    signal release

    implicitWidth: 76
    implicitHeight: 66
    radius: Theme.keyRadius
    color: isPressed ? Theme.accent : isHighlighted ? Theme.litFill : isMelody ? Theme.melodyFill : Theme.inset
    border.width: isHighlighted && !isPressed ? 2 : isPressed ? 0 : 1
    border.color: isHighlighted ? Theme.accent : isMelody ? Theme.melodyLine : Theme.strongHairline
    Accessible.role: Accessible.Button
    Accessible.name: label + " " + note

    Text {
        x: 10
        y: 7
        text: root.label
        color: root.isPressed ? Theme.accentLetter : root.isHighlighted ? Theme.accent : Theme.text
        font.pixelSize: Theme.keySize
        font.weight: Font.DemiBold
    }

    Text {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.rightMargin: 10
        anchors.bottomMargin: 6
        text: root.note
        color: root.isPressed ? Theme.accentLetter : root.isHighlighted ? Theme.text : root.isMelody ? Theme.melody : Theme.secondaryText
        font.pixelSize: Theme.secondarySize
    }

    MouseArea {
        anchors.fill: parent
        property bool isHeld: false

        preventStealing: true
        onPressed: {
            isHeld = true
            root.press()
        }
        onReleased: end()
        onCanceled: end()
        Component.onDestruction: end()

        function end() {
            if (isHeld) {
                isHeld = false
                root.release()
            }
        }
    }
}
