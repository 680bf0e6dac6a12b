import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property int number: 50
    property var told: []

    width: 400
    height: 200
    focus: true

    CleanValueSlider {
        id: slider

        // Two points for each step; the knob's middle stands 9 points from the ends.
        x: 20
        y: 40
        width: 218
        label: "Level"
        from: 0
        to: 100
        defaultValue: 30
        value: root.number
        onChosen: value => {
            root.told.push(value)
            root.number = value
        }
    }

    TestCase {
        name: "CleanValueSlider"
        when: windowShown

        function place(value) {
            return 9 + 2 * value
        }

        function init() {
            mouseMove(root, 1, 1)
            root.forceActiveFocus()
            root.number = 50
            root.told = []
        }

        function drag(first, last) {
            mousePress(slider, place(first), 14)
            mouseMove(slider, place((first + last) / 2), 14)
            mouseMove(slider, place(last), 14)
            mouseRelease(slider, place(last), 14)
        }

        function test_drag() {
            drag(50, 80)
            compare(root.number, 80)
            verify(root.told.length > 1, "it tells while it is dragged")
            drag(80, 12)
            compare(root.number, 12)
        }

        function test_drag_ends_at_the_bounds() {
            drag(50, 150)
            compare(root.number, 100)
            drag(100, -60)
            compare(root.number, 0)
        }

        function test_press_beside_the_knob() {
            mouseClick(slider, place(20), 14)
            compare(root.number, 20)
        }

        function test_wheel() {
            mouseWheel(slider, 100, 14, 0, 120)
            compare(root.number, 51)
            mouseWheel(slider, 100, 14, 0, -120)
            mouseWheel(slider, 100, 14, 0, -120)
            compare(root.number, 49)
        }

        function test_wheel_ends_at_the_bounds() {
            root.number = 100
            mouseWheel(slider, 100, 14, 0, 120)
            compare(root.number, 100)
            root.number = 0
            mouseWheel(slider, 100, 14, 0, -120)
            compare(root.number, 0)
        }

        function test_parts_of_a_wheel_step_add_up() {
            for (let part = 0; part < 8; ++part)
                mouseWheel(slider, 100, 14, 0, 30)
            compare(root.number, 52)
            for (let part = 0; part < 8; ++part)
                mouseWheel(slider, 100, 14, 0, -30)
            compare(root.number, 50)
        }

        function test_arrows_while_the_pointer_is_over_it() {
            mouseMove(slider, 100, 14)
            keyClick(Qt.Key_Right)
            keyClick(Qt.Key_Up)
            compare(root.number, 52)
            keyClick(Qt.Key_Left)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Down)
            compare(root.number, 49)
        }

        function test_arrows_elsewhere_do_nothing() {
            keyClick(Qt.Key_Right)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Down)
            compare(root.told, [])
        }

        function test_arrows_end_at_the_bounds() {
            mouseMove(slider, 100, 14)
            root.number = 100
            keyClick(Qt.Key_Up)
            compare(root.number, 100)
            root.number = 0
            keyClick(Qt.Key_Left)
            compare(root.number, 0)
            compare(root.told, [])
        }

        function test_alt_with_a_double_click_resets() {
            pointer.doubleClick(slider, place(70), 14, Qt.AltModifier)
            compare(root.number, 30)
            compare(Tree.knob(slider).value, 30)
        }

        function test_a_double_click_alone_does_not_reset() {
            pointer.doubleClick(slider, place(70), 14)
            compare(root.number, 70)
        }

        function test_follows_its_value_after_a_drag() {
            drag(50, 80)
            root.number = 10
            compare(Tree.knob(slider).value, 10)
            compare(slider.valueText, "10")
        }
    }
}
