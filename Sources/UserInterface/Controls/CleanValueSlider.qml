import QtQuick
import QtQuick.Templates as T
import Tavro

// A slider over whole numbers: dragged, turned by the wheel, and moved by the arrow keys while the pointer is
// over it. Alt with a double click brings its default back.
Item {
    id: root

    property int from: 0
    property int to: 100
    property int value: 0
    property int defaultValue: 0
    property string label
    // The value in words, for who cannot see it.
    property string valueText: String(value)
    // Where the filled part of the groove begins.
    property real fillOrigin: 0
    signal chosen(int value)

    implicitWidth: 120
    implicitHeight: 28

    function moveBy(steps) {
        const next = Math.max(from, Math.min(to, value + steps))
        if (next !== value)
            chosen(next)
    }

    HoverHandler {
        id: hover
    }

    // Wheels and touchpads that turn in parts of a step move it when the parts have become a whole.
    WheelHandler {
        property real turned: 0

        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        target: null
        onWheel: event => {
            turned += (event.angleDelta.y !== 0 ? event.angleDelta.y : event.angleDelta.x) / 120
            const steps = Math.trunc(turned)
            turned -= steps
            root.moveBy(steps)
        }
    }

    ArrowKeyMonitor {
        isListening: hover.hovered
        onStep: direction => root.moveBy(direction)
    }

    T.Slider {
        id: slider

        anchors.fill: parent
        from: root.from
        to: root.to
        stepSize: 1
        snapMode: T.Slider.SnapAlways
        value: root.value
        focusPolicy: Qt.ClickFocus
        // Under these names screen readers ask for the bounds.
        readonly property real minimumValue: from
        readonly property real maximumValue: to
        Accessible.name: root.label
        Accessible.description: root.valueText
        onMoved: root.chosen(Math.round(value))
        // Screen readers set the value itself. A stored one beyond the bounds only shows as the bound.
        onValueChanged: {
            const isWithin = root.value >= root.from && root.value <= root.to
            if (!pressed && isWithin && Math.round(value) !== root.value)
                root.chosen(Math.round(value))
        }

        background: Rectangle {
            y: (slider.height - height) / 2
            width: slider.width
            height: 4
            radius: 2
            color: Theme.raised

            Rectangle {
                // Ends under the middle of the knob.
                readonly property real knob: (slider.visualPosition * (slider.width - 18) + 9) / slider.width
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
            border.width: slider.pressed ? 5 : hover.hovered ? 3 : 0
            border.color: Theme.secondaryText
        }
    }

    ModifierDoubleClickMonitor {
        anchors.fill: parent
        requiredModifier: Qt.AltModifier
        onAction: root.chosen(root.defaultValue)
    }
}
