import QtQuick
import Tavro

// The keys in their staggered rows, played by the mouse and by fingers.
Item {
    id: root

    required property KeyboardGridModel grid
    readonly property int pitchX: 84
    readonly property int pitchY: 74
    // How far each row is pushed to the right, bottom row first.
    readonly property var stagger: [110, 66, 44, 0]
    signal keyTouched

    implicitWidth: 12 * pitchX - 8 + 44
    implicitHeight: 4 * pitchY - 8

    Item {
        id: keys

        anchors.fill: parent

        Repeater {
            model: root.grid

            KeyCell {
                required property var model
                required property string key
                required property string description
                required property int row
                required property int column

                label: model.label
                note: model.note
                chord: model.chord
                isMelody: model.isMelody
                isPressed: model.isPressed
                isActive: model.isHighlighted
                x: root.stagger[row] + column * root.pitchX
                y: (3 - row) * root.pitchY
                onPress: root.grid.press(key)
                onRelease: root.grid.release(key)
            }
        }
    }

    MultiPointTouchArea {
        anchors.fill: parent
        maximumTouchPoints: 10
        mouseEnabled: true
        // Ready-made ones: the area would never give back one that it makes for a press of the mouse.
        touchPoints: [
            TouchPoint {}, TouchPoint {}, TouchPoint {}, TouchPoint {}, TouchPoint {},
            TouchPoint {}, TouchPoint {}, TouchPoint {}, TouchPoint {}, TouchPoint {}
        ]
        onPressed: points => {
            root.keyTouched()
            root.move(points)
        }
        onUpdated: points => root.move(points)
        onReleased: points => root.end(points)
        onCanceled: points => root.end(points)
    }

    HoverHandler {
        id: hover

        readonly property Item cell: hovered ? keys.childAt(point.position.x, point.position.y) : null
        readonly property bool isPlaying: cell !== null && (cell.isPressed || cell.isActive)
    }

    HelpTip {
        // One tip for all keys, which goes from key to key.
        anchors.fill: null
        x: hover.cell ? hover.cell.x : 0
        y: hover.cell ? hover.cell.y : 0
        width: root.pitchX - 8
        height: root.pitchY - 8
        delay: 700
        text: hover.cell ? hover.cell.description : ""
        isWanted: hover.cell !== null && !hover.isPlaying
    }

    function move(points) {
        for (const point of points) {
            const cell = keys.childAt(point.x, point.y)
            root.grid.touch(point.pointId, cell ? cell.key : "")
        }
    }

    function end(points) {
        for (const point of points)
            root.grid.endTouch(point.pointId)
    }
}
