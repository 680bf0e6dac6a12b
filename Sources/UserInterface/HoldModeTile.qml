import QtQuick
import Tavro

// The two ways of holding notes after their keys were released.
ControlTile {
    id: root

    property bool hold: false
    property bool smartHold: false
    signal holdChosen(bool isOn)
    signal smartHoldChosen(bool isOn)

    title: qsTr("Hold / Smart Hold")
    help: HelpTexts.hold

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 44

        LabelledSwitch {
            label: qsTr("Hold")
            isOn: root.hold
            onToggledTo: isOn => root.holdChosen(isOn)
        }

        LabelledSwitch {
            label: qsTr("Smart Hold")
            isOn: root.smartHold
            onToggledTo: isOn => root.smartHoldChosen(isOn)
        }
    }
}
