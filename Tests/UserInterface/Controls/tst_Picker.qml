import QtQuick
import QtQuick.Controls
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property var number: 4
    property var told: []
    property int openings: 0

    width: 400
    height: 500

    Picker {
        id: picker

        x: 20
        y: 20
        label: "Root"
        choices: Array.from({ length: 30 }, (_, index) => ({ text: "Entry " + index, value: index }))
        value: root.number
        onOpening: ++root.openings
        onChosen: value => {
            root.told.push(value)
            root.number = value
        }
    }

    TestCase {
        name: "Picker"
        when: windowShown

        function init() {
            picker.y = 20
            root.number = 4
            root.told = []
            root.openings = 0
        }

        function list() {
            return Tree.find(picker.Overlay.overlay, one => one.currentIndex !== undefined && one.visible)
        }

        function open() {
            mouseClick(picker)
            tryVerify(() => list() !== undefined)
        }

        function verifyClosed() {
            tryVerify(() => list() === undefined)
        }

        function test_shows_the_text_of_its_value() {
            compare(picker.contentItem.text, "Entry 4")
            root.number = 99
            compare(picker.contentItem.text, "")
            root.number = 0
            compare(picker.contentItem.text, "Entry 0")
        }

        function test_a_click_on_an_entry() {
            open()
            compare(root.openings, 1)
            mouseClick(Tree.textItem(list(), "Entry 6"))
            compare(root.told, [6])
            verifyClosed()
            compare(picker.contentItem.text, "Entry 6")
        }

        function test_arrows_and_return_go_from_the_chosen_entry() {
            open()
            compare(list().currentIndex, 4)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Up)
            keyClick(Qt.Key_Return)
            compare(root.told, [5])
            verifyClosed()
        }

        function test_space_and_enter_choose_too() {
            open()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Space)
            verifyClosed()
            open()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Enter)
            verifyClosed()
            compare(root.told, [5, 6])
        }

        function test_arrows_end_at_both_ends() {
            root.number = 0
            open()
            keyClick(Qt.Key_Up)
            keyClick(Qt.Key_Return)
            compare(root.number, 0)
            verifyClosed()
            root.number = 29
            open()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Return)
            compare(root.number, 29)
            verifyClosed()
        }

        function test_escape_and_a_press_elsewhere_choose_nothing() {
            open()
            keyClick(Qt.Key_Down)
            keyClick(Qt.Key_Escape)
            verifyClosed()
            open()
            mouseClick(root, 390, 490)
            verifyClosed()
            compare(root.told, [])
        }

        function test_a_long_list_is_turned_by_the_wheel() {
            open()
            verify(list().height < list().contentHeight)
            const before = list().contentY
            mouseWheel(list(), 20, 20, 0, -240)
            tryVerify(() => list().contentY > before)
            keyClick(Qt.Key_Escape)
            verifyClosed()
        }

        function test_the_chosen_entry_is_in_sight() {
            root.number = 27
            open()
            const entry = Tree.textItem(list(), "Entry 27")
            const top = entry.mapToItem(list(), 0, 0).y
            verify(top >= 0 && top + entry.height <= list().height)
            keyClick(Qt.Key_Escape)
            verifyClosed()
        }

        function test_opens_upwards_where_there_is_no_room_below() {
            picker.y = 440
            open()
            verify(list().mapToItem(root, 0, list().height).y <= 440)
            keyClick(Qt.Key_Escape)
            verifyClosed()
        }

        function test_an_entry_that_has_gone_meanwhile_chooses_nothing() {
            const before = picker.choices
            open()
            picker.choices = []
            keyClick(Qt.Key_Return)
            verifyClosed()
            compare(root.told, [])
            picker.choices = before
        }
    }
}
