import QtQuick
import Tavro

// A number that can be typed over. Enter and leaving the field take the draft over, Escape drops it.
Rectangle {
    id: root

    property int from: 0
    property int to: 100
    property int value: 0
    property string label
    property string suffix
    // Stands for 0 while the number is not being edited.
    property string zeroText
    readonly property bool isEditing: input.activeFocus
    readonly property alias draft: input.text
    readonly property string shownText: value === 0 && zeroText !== "" ? zeroText : value + suffix
    signal chosen(int value)

    implicitWidth: 48
    implicitHeight: 32
    radius: 7
    color: Theme.inset
    border.width: isEditing ? 2 : 1
    border.color: isEditing ? Theme.secondaryText : Theme.hairline

    function commit() {
        const number = NumericDraft.committedValue(input.text, root.value, root.from, root.to)
        if (number !== root.value)
            root.chosen(number)
    }

    // What has the focus decides where keys go; with none of the fields having it, they play.
    function leave() {
        input.focus = false
    }

    Text {
        anchors.centerIn: parent
        visible: !root.isEditing
        text: root.shownText
        color: Theme.text
        font.pixelSize: Theme.controlSize
    }

    // The second press of a double click too, which the field itself takes for a selection only.
    TapHandler {
        onPressedChanged: if (pressed && !root.isEditing) input.forceActiveFocus(Qt.MouseFocusReason)
    }

    TextInput {
        id: input

        property bool isDropped: false

        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        horizontalAlignment: TextInput.AlignHCenter
        verticalAlignment: TextInput.AlignVCenter
        text: root.value
        // Not hidden: who cannot see it finds the field also while nobody edits.
        color: activeFocus ? Theme.text : "transparent"
        selectionColor: Theme.raised
        selectedTextColor: Theme.text
        font.pixelSize: Theme.controlSize
        clip: true
        activeFocusOnPress: true
        Accessible.role: Accessible.EditableText
        Accessible.name: root.label
        Accessible.description: root.shownText

        onActiveFocusChanged: {
            if (activeFocus) {
                isDropped = false
                text = root.value
                selectAll()
            } else {
                if (!isDropped)
                    root.commit()
                text = Qt.binding(() => root.value)
            }
        }
        onAccepted: root.leave()
        Keys.onEscapePressed: {
            isDropped = true
            root.leave()
        }
    }
}
