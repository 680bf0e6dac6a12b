import QtQuick
import QtQuick.Templates as T
import Tavro

// A button at the foot of a sheet; the prominent one is what the Return key does.
T.AbstractButton {
    id: root

    property bool isProminent: false

    implicitWidth: 108
    implicitHeight: 38
    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.defaultButton: isProminent

    background: Rectangle {
        radius: Theme.controlRadius
        opacity: root.enabled ? 1 : 0.5
        color: root.isProminent ? root.down || root.hovered ? Qt.darker(Theme.text, 1.12) : Theme.text
                                : root.down || root.hovered ? Theme.raised : Theme.inset
        border.width: root.isProminent ? 0 : 1
        border.color: root.down || root.hovered ? Theme.secondaryText : Theme.quietText

        // Where the keyboard stands.
        Rectangle {
            anchors.fill: parent
            anchors.margins: -4
            visible: root.visualFocus
            radius: Theme.controlRadius + 4
            color: "transparent"
            border.width: 2
            border.color: Theme.secondaryText
        }
    }

    contentItem: Text {
        text: root.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: root.isProminent ? Theme.accentLetter : Theme.text
        opacity: root.enabled ? 1 : 0.4
        font.pixelSize: Theme.controlSize
        font.weight: Font.DemiBold
    }
}
