import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property int number: 8

    width: 600
    height: 300
    focus: true

    SliderTile {
        id: tile

        x: 20
        y: 20
        width: 240
        title: "Note Limit"
        help: "Limits the notes."
        from: 0
        to: 16
        defaultValue: 8
        zeroText: "Off"
        value: root.number
        onChosen: value => root.number = value
    }

    SliderTile {
        id: centred

        x: 300
        y: 20
        width: 240
        title: "Strum"
        isCentered: true
        from: -50
        to: 50
        defaultValue: 0
        suffix: " ms"
        value: root.number
        onChosen: value => root.number = value
    }

    TestCase {
        name: "SliderTile"
        when: windowShown

        function init() {
            root.forceActiveFocus()
            root.number = 8
        }

        function test_knob_and_number_are_one() {
            const knob = Tree.knob(tile)
            const first = knob.mapToItem(tile, 9 + knob.visualPosition * (knob.width - 18), 14)
            mouseDrag(tile, first.x, first.y, 300, 0)
            compare(root.number, 16)
            verify(Tree.textItem(tile, "16"))
            mouseClick(Tree.named(tile, "Note Limit", "EditableNumericValue"))
            keyClick("3")
            keyClick(Qt.Key_Return)
            compare(root.number, 3)
            compare(knob.value, 3)
        }

        function test_wheel() {
            const knob = Tree.knob(tile)
            mouseWheel(knob, knob.width / 2, knob.height / 2, 0, -120)
            compare(root.number, 7)
        }

        function test_zero_has_its_word() {
            root.number = 0
            verify(Tree.textItem(tile, "Off"))
            compare(Tree.named(tile, "Note Limit", "CleanValueSlider").valueText, "Off")
        }

        function test_typed_number_is_clamped() {
            mouseClick(Tree.named(tile, "Note Limit", "EditableNumericValue"))
            keyClick("9")
            keyClick("9")
            keyClick(Qt.Key_Return)
            compare(root.number, 16)
        }

        function test_alt_with_a_double_click_resets() {
            root.number = 2
            const knob = Tree.knob(tile)
            pointer.doubleClick(knob, knob.width / 2, knob.height / 2, Qt.AltModifier)
            compare(root.number, 8)
        }

        function test_suffix() {
            verify(Tree.textItem(centred, "8 ms"))
        }

        function test_a_centred_one_is_filled_from_the_middle() {
            compare(Tree.named(centred, "Strum", "CenteredValueSlider").fillOrigin, 0.5)
            compare(Tree.named(tile, "Note Limit", "CleanValueSlider").fillOrigin, 0)
        }

        function test_the_number_leaves_the_knob_its_room() {
            for (const one of [tile, centred]) {
                const knob = Tree.knob(one)
                const number = Tree.named(one, one.title, "EditableNumericValue")
                verify(knob.mapToItem(one, knob.width, 0).x < number.mapToItem(one, 0, 0).x)
                verify(knob.width > 60)
            }
        }
    }
}
