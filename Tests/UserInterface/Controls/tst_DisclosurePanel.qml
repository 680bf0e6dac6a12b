import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property var told: []

    width: 600
    height: 300

    DisclosurePanel {
        id: panel

        width: 600
        title: "Advanced"
        summary: "All quiet"
        closedHeight: 44
        openHeight: 148
        onToggledTo: isVisible => root.told.push(isVisible)

        Rectangle {
            id: inside

            width: 100
            height: 50
        }
    }

    TestCase {
        name: "DisclosurePanel"
        when: windowShown

        function init() {
            panel.isVisible = false
            root.told = []
        }

        function test_closed_it_shows_its_summary() {
            compare(panel.height, 44)
            verify(Tree.textItem(panel, "All quiet"))
            verify(!inside.visible)
        }

        function test_open_it_shows_its_content() {
            panel.isVisible = true
            compare(panel.height, 148)
            verify(!Tree.textItem(panel, "All quiet"))
            verify(inside.visible)
            compare(inside.mapToItem(panel, 0, 0).y, 44)
        }

        function test_the_whole_title_line_toggles() {
            mouseClick(panel, 60, 22)
            compare(root.told, [true])
            verify(!panel.isVisible)
            panel.isVisible = true
            mouseClick(panel, 580, 22)
            compare(root.told, [true, false])
        }

        function test_the_content_does_not_toggle() {
            panel.isVisible = true
            mouseClick(panel, 300, 100)
            compare(root.told, [])
        }

        function test_the_mark_turns_with_it() {
            const mark = Tree.find(panel, one => String(one.name).startsWith("chevron"))
            compare(mark.name, "chevron.right")
            panel.isVisible = true
            compare(mark.name, "chevron.down")
        }
    }
}
