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

    TextInput {
        id: input

        property bool isDropped: false

        anchors.fill: parent
        anchors.leftMargin: 4
        anchors.rightMargin: 4
        horizontalAlignment: TextInput.AlignHCenter
        verticalAlignment: TextInput.AlignVCenter
        opacity: activeFocus ? 1 : 0
        color: Theme.text
        selectionColor: Theme.quietText
        selectedTextColor: Theme.text
        font.pixelSize: Theme.controlSize
        clip: true
        activeFocusOnPress: true
        Accessible.name: root.label

        onActiveFocusChanged: {
            if (activeFocus) {
                isDropped = false
                text = root.value
                selectAll()
            } else if (!isDropped) {
                root.commit()
            }
        }
        onAccepted: root.leave()
        Keys.onEscapePressed: {
            isDropped = true
            root.leave()
        }
    }
}
