import QtQuick
import Tavro

// The keys in their staggered rows.
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

    Repeater {
        model: root.grid

        KeyCell {
            id: cell

            required property var model
            required property string key
            required property int row
            required property int column

            label: model.label
            note: model.note
            isMelody: model.isMelody
            isPressed: model.isPressed
            isHighlighted: model.isHighlighted
            x: root.stagger[row] + column * root.pitchX
            y: (3 - row) * root.pitchY
            onPress: {
                root.keyTouched()
                root.grid.press(key)
            }
            onRelease: root.grid.release(key)
        }
    }
}
