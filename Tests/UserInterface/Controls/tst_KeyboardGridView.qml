import QtQuick
import QtQuick.Controls
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property int touches: 0

    width: 1100
    height: 400

    KeyboardGridView {
        id: view

        x: 20
        y: 20
        grid: keyboard.grid
        onKeyTouched: ++root.touches
    }

    TestCase {
        name: "KeyboardGridView"
        when: windowShown

        function cleanup() {
            compare(keyboard.takeNotes(), [])
            mouseMove(root, 1095, 395)
        }

        function cell(label) {
            return Tree.find(view, one => one.isPressed !== undefined && one.label === label)
        }

        function place(label) {
            const one = cell(label)
            return one.mapToItem(view, one.width / 2, one.height / 2)
        }

        // Moves of fingers are delivered with the next frame. What they cause together comes in any order.
        function compareNotes(expected) {
            let notes = []
            tryVerify(() => {
                notes = notes.concat(keyboard.takeNotes())
                return notes.length >= expected.length
            })
            compare(notes.sort(), expected)
        }

        // Between two keys of a row.
        function gapBehind(label) {
            const one = cell(label)
            return one.mapToItem(view, one.width + 4, one.height / 2)
        }

        function test_every_key_is_there_in_staggered_rows() {
            compare(Tree.all(view).filter(one => one.isPressed !== undefined).length, 45)
            verify(place("1").x < place("Q").x && place("Q").x < place("A").x && place("A").x < place("Y").x)
            verify(place("1").y < place("Q").y && place("Q").y < place("A").y && place("A").y < place("Y").y)
        }

        function test_mouse() {
            const touchesBefore = root.touches
            const at = place("D")
            mousePress(view, at.x, at.y)
            compare(keyboard.takeNotes(), ["on 62"])
            verify(cell("D").isPressed)
            mouseRelease(view, at.x, at.y)
            compare(keyboard.takeNotes(), ["off 62"])
            verify(!cell("D").isPressed)
            compare(root.touches, touchesBefore + 1)
        }

        function test_mouse_slides_from_key_to_key() {
            const places = [place("A"), gapBehind("A"), place("S"), place("W")]
            mousePress(view, places[0].x, places[0].y)
            compare(keyboard.takeNotes(), ["on 60"])
            mouseMove(view, places[1].x, places[1].y)
            compare(keyboard.takeNotes(), [])
            mouseMove(view, places[2].x, places[2].y)
            compare(keyboard.takeNotes(), ["off 60", "on 61"])
            mouseMove(view, places[3].x, places[3].y)
            compare(keyboard.takeNotes(), ["off 61", "on 73"])
            mouseRelease(view, places[3].x, places[3].y)
            compare(keyboard.takeNotes(), ["off 73"])
        }

        function test_a_press_between_keys_plays_the_first_key_that_it_slides_to() {
            const gap = gapBehind("A")
            const at = place("S")
            mousePress(view, gap.x, gap.y)
            compare(keyboard.takeNotes(), [])
            mouseMove(view, at.x, at.y)
            mouseRelease(view, at.x, at.y)
            compare(keyboard.takeNotes(), ["on 61", "off 61"])
        }

        function test_letting_go_elsewhere_ends_the_note() {
            const at = place("1")
            mousePress(view, at.x, at.y)
            mouseMove(view, at.x, -15)
            compare(keyboard.takeNotes(), ["on 84"])
            mouseRelease(view, at.x, -15)
            compare(keyboard.takeNotes(), ["off 84"])
        }

        function test_three_fingers() {
            const [a, d, g] = ["A", "D", "G"].map(place)
            touchEvent(view).press(1, view, a.x, a.y).press(2, view, d.x, d.y).press(3, view, g.x, g.y).commit()
            compareNotes(["on 60", "on 62", "on 64"])
            verify(cell("A").isPressed && cell("D").isPressed && cell("G").isPressed)
            touchEvent(view).stationary(1).release(2, view, d.x, d.y).stationary(3).commit()
            compareNotes(["off 62"])
            touchEvent(view).release(1, view, a.x, a.y).release(3, view, g.x, g.y).commit()
            compareNotes(["off 60", "off 64"])
            verify(!cell("A").isPressed && !cell("G").isPressed)
        }

        function test_each_finger_slides_for_itself() {
            const [a, s, k, l] = ["A", "S", "K", "L"].map(place)
            touchEvent(view).press(1, view, a.x, a.y).press(2, view, k.x, k.y).commit()
            compareNotes(["on 60", "on 67"])
            touchEvent(view).move(1, view, s.x, s.y).stationary(2).commit()
            compareNotes(["off 60", "on 61"])
            touchEvent(view).stationary(1).move(2, view, l.x, l.y).commit()
            compareNotes(["off 67", "on 68"])
            touchEvent(view).release(1, view, s.x, s.y).release(2, view, l.x, l.y).commit()
            compareNotes(["off 61", "off 68"])
        }

        function test_two_fingers_on_one_key_sound_once() {
            const [a, s] = ["A", "S"].map(place)
            touchEvent(view).press(1, view, a.x, a.y).press(2, view, s.x, s.y).commit()
            compareNotes(["on 60", "on 61"])
            touchEvent(view).stationary(1).move(2, view, a.x, a.y).commit()
            compareNotes(["off 61"])
            touchEvent(view).release(1, view, a.x, a.y).stationary(2).commit()
            compare(keyboard.takeNotes(), [])
            verify(cell("A").isPressed)
            touchEvent(view).release(2, view, a.x, a.y).commit()
            compareNotes(["off 60"])
        }

        function test_a_quiet_key_tells_what_it_plays() {
            const at = place("F")
            mouseMove(view, at.x, at.y)
            tryVerify(() => Tree.textItem(view.Overlay.overlay, cell("F").description) !== undefined)
        }
    }
}
