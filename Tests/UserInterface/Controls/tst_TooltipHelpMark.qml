import QtQuick
import QtQuick.Controls
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    width: 500
    height: 300

    LabelWithHelp {
        id: label

        x: 20
        y: 20
        title: "Octave"
        help: "Moves the keyboard."
    }

    ControlTile {
        id: tile

        x: 20
        y: 80
        width: 200
        title: "Root"
        help: "Sets the root."

        Rectangle {
            id: inside

            anchors.fill: parent
        }
    }

    TestCase {
        name: "TooltipHelpMark"
        when: windowShown

        function mark(item) {
            return Tree.find(item, one => one.isHovering !== undefined)
        }

        function tip(text) {
            return Tree.textItem(root.Overlay.overlay, text)
        }

        function init() {
            mouseMove(root, 490, 290)
            label.help = "Moves the keyboard."
        }

        function test_tells_while_the_pointer_rests_on_it() {
            compare(tip("Moves the keyboard."), undefined)
            mouseMove(mark(label), 9, 9)
            verify(mark(label).isHovering)
            tryVerify(() => tip("Moves the keyboard.") !== undefined)
            mouseMove(root, 490, 290)
            verify(!mark(label).isHovering)
            tryVerify(() => tip("Moves the keyboard.") === undefined)
        }

        function test_a_short_text_stands_in_one_line() {
            mouseMove(mark(tile), 9, 9)
            tryVerify(() => tip("Sets the root.") !== undefined)
            compare(tip("Sets the root.").lineCount, 1)
        }

        function test_a_long_text_is_shown_whole() {
            label.help = HelpTexts.splitMode
            mouseMove(mark(label), 9, 9)
            tryVerify(() => tip(HelpTexts.splitMode) !== undefined)
            const shown = tip(HelpTexts.splitMode)
            verify(shown.lineCount > 2)
            verify(!shown.truncated)
            verify(shown.height >= shown.contentHeight)
        }

        function test_a_title_without_help_has_no_mark() {
            verify(mark(label).visible)
            label.help = ""
            verify(!mark(label).visible)
            verify(Tree.textItem(label, "Octave"))
        }

        function test_a_tile_shows_title_mark_and_control() {
            verify(Tree.textItem(tile, "Root"))
            compare(mark(tile).help, "Sets the root.")
            compare(inside.mapToItem(tile, 0, 0), Qt.point(16, 41))
            compare([inside.width, inside.height], [168, 38])
        }

        function test_frame_and_divider_of_a_tile() {
            const rectangles = Tree.all(tile).filter(one => String(one).startsWith("QQuickRectangle") && one !== inside)
            const frame = rectangles.find(one => one.width === tile.width)
            const divider = rectangles.find(one => one.width === 1)
            compare([frame.visible, divider.visible], [true, false])
            tile.hasFrame = false
            tile.showsDivider = true
            compare([frame.visible, divider.visible], [false, true])
            compare(divider.x, tile.width - 1)
        }
    }
}
