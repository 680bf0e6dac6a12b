import QtQuick
import QtQuick.Templates as T
import Tavro

// A slider over whole numbers. Alt with a double click brings its default back.
Item {
    id: root

    property int from: 0
    property int to: 100
    property int value: 0
    property int defaultValue: 0
    property string label
    // Where the filled part of the groove begins.
    property real fillOrigin: 0
    signal chosen(int value)

    implicitWidth: 120
    implicitHeight: 28

    T.Slider {
        id: slider

        anchors.fill: parent
        from: root.from
        to: root.to
        stepSize: 1
        snapMode: T.Slider.SnapAlways
        value: root.value
        focusPolicy: Qt.ClickFocus
        Accessible.name: root.label
        onMoved: root.chosen(Math.round(value))

        background: Rectangle {
            y: (slider.height - height) / 2
            width: slider.width
            height: 4
            radius: 2
            color: Theme.raised

            Rectangle {
                readonly property real knob: slider.visualPosition
                x: Math.min(knob, root.fillOrigin) * parent.width
                width: Math.abs(knob - root.fillOrigin) * parent.width
                height: parent.height
                radius: 2
                color: Theme.secondaryText
            }
        }

        handle: Rectangle {
            x: slider.visualPosition * (slider.width - width)
            y: (slider.height - height) / 2
            width: 18
            height: 18
            radius: 9
            color: Theme.text
            border.width: slider.pressed ? 4 : 0
            border.color: Theme.secondaryText
        }
    }

    ModifierDoubleClickMonitor {
        anchors.fill: parent
        requiredModifier: Qt.AltModifier
        onAction: root.chosen(root.defaultValue)
    }
}
