import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property var told: []

    width: 200
    height: 200

    KeyCell {
        id: cell

        label: "A"
        note: "C4"
        onPress: root.told.push("press")
        onRelease: root.told.push("release")
    }

    TestCase {
        name: "KeyCell"
        when: windowShown

        function init() {
            cell.chord = ""
            cell.isActive = false
            cell.isPressed = false
            cell.isMelody = false
            root.told = []
        }

        // Fill and frame; both must differ, for eyes that do not tell the colours apart.
        function look() {
            const cap = cell.children[0]
            return { fill: String(cap.color), frame: cap.border.width }
        }

        function brightness(colour) {
            const one = Qt.color(colour)
            return 0.2126 * one.r + 0.7152 * one.g + 0.0722 * one.b
        }

        function test_shows_key_and_note() {
            verify(Tree.textItem(cell, "A"))
            verify(Tree.textItem(cell, "C4"))
            compare(cell.Accessible.name, "A: C4")
        }

        function test_shows_a_chord_over_its_lowest_note() {
            cell.chord = "Cmaj7"
            verify(Tree.textItem(cell, "Cmaj7").y > Tree.textItem(cell, "C4").y)
            compare(cell.Accessible.name, "A: Cmaj7, from C4")
        }

        function test_a_long_chord_is_cut_inside_the_key() {
            cell.chord = "C#maj13(#11)/F#add9"
            const shown = Tree.textItem(cell, cell.chord)
            verify(shown.truncated)
            verify(shown.x + shown.width <= cell.width)
        }

        function test_pressed_and_lit_differ_from_each_other_and_from_quiet() {
            const quiet = look()
            cell.isActive = true
            const lit = look()
            cell.isPressed = true
            const pressed = look()
            verify(lit.frame > quiet.frame)
            verify(pressed.frame < quiet.frame)
            verify(brightness(pressed.fill) > brightness(lit.fill) + 0.4)
            verify(lit.fill !== quiet.fill)
        }

        function test_pressed_alone_looks_as_pressed_and_lit() {
            cell.isPressed = true
            const alone = look()
            cell.isActive = true
            compare(look(), alone)
        }

        function test_melody_has_a_colour_of_its_own() {
            const quiet = look()
            cell.isMelody = true
            verify(look().fill !== quiet.fill)
        }

        function test_can_be_played_without_a_pointer() {
            cell.Accessible.pressAction()
            compare(root.told, ["press", "release"])
        }
    }
}
