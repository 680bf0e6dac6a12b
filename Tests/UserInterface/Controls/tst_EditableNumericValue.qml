import QtQuick
import QtTest
import Tavro

Item {
    id: root

    property int number: 50
    property var told: []

    width: 300
    height: 120
    focus: true

    EditableNumericValue {
        id: field

        x: 20
        y: 40
        label: "Level"
        from: -20
        to: 100
        value: root.number
        onChosen: value => {
            root.told.push(value)
            root.number = value
        }
    }

    TestCase {
        name: "EditableNumericValue"
        when: windowShown

        function init() {
            root.forceActiveFocus()
            field.zeroText = ""
            field.suffix = ""
            root.number = 50
            root.told = []
        }

        function enter(text) {
            mouseClick(field)
            verify(field.isEditing)
            for (const character of text)
                keyClick(character)
            keyClick(Qt.Key_Return)
            verify(!field.isEditing)
        }

        function test_a_click_selects_the_number_to_be_typed_over() {
            mouseClick(field)
            compare(field.draft, "50")
            keyClick("7")
            compare(field.draft, "7")
            compare(root.told, [])
            keyClick(Qt.Key_Return)
            compare(root.told, [7])
            verify(!field.isEditing)
        }

        function test_drafts_data() {
            return [
                { tag: "number", text: "64", wanted: 64 },
                { tag: "negative", text: "-5", wanted: -5 },
                { tag: "too large", text: "300", wanted: 100 },
                { tag: "too small", text: "-300", wanted: -20 },
                { tag: "lower bound", text: "-20", wanted: -20 },
                { tag: "upper bound", text: "100", wanted: 100 },
                { tag: "zero", text: "0", wanted: 0 },
                { tag: "larger than any integer", text: "99999999999999999999", wanted: 100 },
                { tag: "no number", text: "abc", wanted: 50 },
                { tag: "a number and more", text: "12x", wanted: 50 },
                { tag: "a sign alone", text: "-", wanted: 50 },
                { tag: "blank", text: " ", wanted: 50 }
            ]
        }

        function test_drafts(data) {
            enter(data.text)
            compare(root.number, data.wanted)
            compare(field.shownText, String(data.wanted))
        }

        function test_an_empty_draft_is_dropped() {
            mouseClick(field)
            keyClick(Qt.Key_Backspace)
            compare(field.draft, "")
            keyClick(Qt.Key_Enter)
            compare(root.told, [])
            verify(!field.isEditing)
        }

        function test_the_same_number_tells_nothing() {
            enter("50")
            compare(root.told, [])
        }

        function test_escape_drops_the_draft() {
            mouseClick(field)
            keyClick("7")
            keyClick(Qt.Key_Escape)
            verify(!field.isEditing)
            compare(root.told, [])
            mouseClick(field)
            compare(field.draft, "50")
            keyClick("8")
            keyClick(Qt.Key_Return)
            compare(root.told, [8])
        }

        function test_leaving_the_field_takes_the_draft_over() {
            mouseClick(field)
            keyClick("7")
            root.forceActiveFocus()
            compare(root.told, [7])
        }

        function test_a_double_click_edits() {
            // Away from the other tests' clicks, which would be third ones of a series.
            pointer.doubleClick(field, 8, 8)
            verify(field.isEditing)
            keyClick("9")
            keyClick(Qt.Key_Return)
            compare(root.told, [9])
        }

        function test_the_second_press_of_a_double_click_edits_also_behind_return() {
            pointer.click(field, 40, 8)
            keyClick("4")
            keyClick(Qt.Key_Return)
            pointer.clickAgain(field, 40, 8)
            verify(field.isEditing)
            keyClick("6")
            keyClick(Qt.Key_Return)
            compare(root.told, [4, 6])
        }

        function test_suffix_and_zero_text_stand_only_where_nothing_is_typed() {
            field.suffix = " ms"
            field.zeroText = "Off"
            compare(field.shownText, "50 ms")
            root.number = 0
            compare(field.shownText, "Off")
            mouseClick(field)
            compare(field.draft, "0")
            keyClick(Qt.Key_Escape)
            root.number = -3
            compare(field.shownText, "-3 ms")
            mouseClick(field)
            compare(field.draft, "-3")
        }
    }
}
