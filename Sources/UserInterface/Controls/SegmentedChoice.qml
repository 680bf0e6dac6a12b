import QtQuick
import QtQuick.Templates as T
import Tavro

// A few choices side by side; entries have a text and a value.
Rectangle {
    id: root

    property var choices: []
    property var value
    property string label
    signal chosen(var value)

    implicitWidth: row.width + 6
    implicitHeight: 36
    radius: Theme.controlRadius
    color: Theme.bed
    border.width: 1
    border.color: Theme.hairline

    Row {
        id: row

        anchors.centerIn: parent

        Repeater {
            model: root.choices

            T.RadioButton {
                id: segment

                required property var modelData
                readonly property bool isChosen: modelData.value === root.value

                width: 52
                height: 30
                focusPolicy: Qt.ClickFocus
                checked: isChosen
                Accessible.name: root.label + " " + modelData.text
                onClicked: root.chosen(modelData.value)

                background: Rectangle {
                    radius: 6
                    color: segment.isChosen ? Theme.raised : "transparent"
                }
                contentItem: Text {
                    text: segment.modelData.text
                    color: segment.isChosen ? Theme.text : Theme.secondaryText
                    font.pixelSize: Theme.controlSize
                    horizontalAlignment: Text.AlignHCenter
                    verticalAlignment: Text.AlignVCenter
                }
            }
        }
    }
}
