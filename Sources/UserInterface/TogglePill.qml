import QtQuick
import QtQuick.Templates as T
import Tavro

// A switch. It shows the value it is bound to and asks for the other one.
T.AbstractButton {
    id: root

    property bool isOn: false
    property string label
    signal toggledTo(bool isOn)

    implicitWidth: 52
    implicitHeight: 30
    focusPolicy: Qt.ClickFocus
    Accessible.role: Accessible.CheckBox
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.name: label
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

            Behavior on x {
                NumberAnimation {
                    duration: 90
                }
            }
        }
    }
}
