import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property int number: 0

    width: 400
    height: 200

    CenteredValueSlider {
        id: slider

        x: 20
        y: 40
        width: 218
        label: "Strum"
        from: -50
        to: 50
        defaultValue: 0
        value: root.number
        onChosen: value => root.number = value
    }

    TestCase {
        name: "CenteredValueSlider"
        when: windowShown

        // The filled part of the groove.
        readonly property Item filled: Tree.find(slider, one => one.knob !== undefined)

        function init() {
            mouseMove(root, 1, 1)
            root.number = 0
        }

        function place(value) {
            return 109 + 2 * value
        }

        function test_drag_to_both_sides() {
            mouseDrag(slider, place(0), 14, 60, 0)
            compare(root.number, 30)
            mouseDrag(slider, place(30), 14, -120, 0)
            compare(root.number, -30)
        }

        function test_wheel_and_arrows_cross_the_middle() {
            root.number = 1
            mouseMove(slider, 100, 14)
            mouseWheel(slider, 100, 14, 0, -120)
            mouseWheel(slider, 100, 14, 0, -120)
            compare(root.number, -1)
            keyClick(Qt.Key_Up)
            keyClick(Qt.Key_Up)
            compare(root.number, 1)
        }

        function test_bounds() {
            root.number = -50
            mouseMove(slider, 100, 14)
            mouseWheel(slider, 100, 14, 0, -120)
            keyClick(Qt.Key_Down)
            compare(root.number, -50)
            mouseDrag(slider, place(-50), 14, 350, 0)
            compare(root.number, 50)
        }

        function test_alt_with_a_double_click_brings_it_to_the_middle() {
            root.number = 33
            pointer.doubleClick(slider, place(-20), 14, Qt.AltModifier)
            compare(root.number, 0)
        }

        function test_is_filled_from_the_middle() {
            compare(filled.width, 0)
            root.number = 25
            fuzzyCompare(filled.x, 109, 0.01)
            fuzzyCompare(filled.width, 50, 0.01)
            root.number = -25
            fuzzyCompare(filled.x, 59, 0.01)
            fuzzyCompare(filled.width, 50, 0.01)
        }
    }
}
