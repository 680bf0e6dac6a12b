import QtQuick
import QtQuick.Templates as T
import Tavro

// A switch. It shows the value it is bound to and asks for the other one. Nothing in the window moves by itself.
T.CheckBox {
    id: root

    property bool isOn: false
    property string label
    signal toggledTo(bool isOn)

    implicitWidth: 52
    implicitHeight: 30
    focusPolicy: Qt.ClickFocus
    checkState: isOn ? Qt.Checked : Qt.Unchecked
    nextCheckState: () => checkState
    Accessible.name: label
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    onClicked: toggledTo(!isOn)

    background: Rectangle {
        radius: height / 2
        color: root.isOn ? Theme.accent : Theme.inset
        border.width: root.isOn ? 0 : 1
        border.color: Theme.strongHairline

        Rectangle {
            x: root.isOn ? parent.width - width - 3 : 3
            y: 3
            width: 24
            height: 24
            radius: 12
            color: root.isOn ? Theme.accentLetter : Theme.secondaryText
        }
    }
}
