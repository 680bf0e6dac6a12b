import QtQuick
import Tavro

// A switch with its words behind it.
Row {
    id: root

    property string label
    property bool isOn: false
    signal toggledTo(bool isOn)

    spacing: 12

    TogglePill {
        label: root.label
        isOn: root.isOn
        onToggledTo: isOn => root.toggledTo(isOn)
    }

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: root.label
        color: Theme.text
        font.pixelSize: Theme.controlSize
        Accessible.ignored: true
    }
}
