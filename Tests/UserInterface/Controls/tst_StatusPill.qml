import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    width: 600
    height: 100

    StatusPill {
        id: pill

        text: "Global Off"
    }

    TestCase {
        name: "StatusPill"
        when: windowShown

        function init() {
            pill.maximumWidth = 400
        }

        function test_is_as_wide_as_its_text() {
            pill.text = "Global Off"
            const before = pill.width
            const label = Tree.textItem(pill, "Global Off")
            verify(!label.truncated)
            pill.text = "A text that is much longer than that"
            verify(pill.width > before)
            verify(!label.truncated)
        }

        function test_a_text_that_is_too_long_is_cut() {
            pill.maximumWidth = 120
            pill.text = "A text that is much longer than its room"
            compare(pill.width, 120)
            verify(Tree.textItem(pill, pill.text).truncated)
        }

        function test_markup_is_shown_as_it_is() {
            pill.text = "<b>name</b>"
            compare(Tree.textItem(pill, pill.text).textFormat, Text.PlainText)
        }

        function test_the_colour_of_the_dot_is_the_callers() {
            pill.dot = "#ff0000"
            verify(Tree.find(pill, one => one.radius === 4 && Qt.colorEqual(one.color, "#ff0000")))
        }
    }
}
