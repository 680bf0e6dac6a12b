import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property bool hold: false
    property bool smartHold: false
    property bool bass: false
    property int octaveDown: 1
    property var told: []

    width: 700
    height: 300

    TogglePill {
        id: pill

        x: 20
        y: 20
        label: "Chord"
        onToggledTo: isOn => root.told.push(isOn)
    }

    HoldModeTile {
        id: holdTile

        x: 20
        y: 70
        width: 320
        hold: root.hold
        smartHold: root.smartHold
        onHoldChosen: isOn => root.hold = isOn
        onSmartHoldChosen: isOn => root.smartHold = isOn
    }

    BassnoteTile {
        id: bassTile

        x: 20
        y: 180
        width: 400
        octaves: [{ text: "-1", value: 1 }, { text: "-2", value: 2 }]
        isOn: root.bass
        octaveDown: root.octaveDown
        onToggledTo: isOn => root.bass = isOn
        onOctaveChosen: octaveDown => root.octaveDown = octaveDown
    }

    TestCase {
        name: "Switches"
        when: windowShown

        function init() {
            pill.isOn = false
            root.told = []
            root.hold = false
            root.smartHold = false
            root.bass = false
            root.octaveDown = 1
        }

        function test_a_pill_asks_and_shows_what_it_is_bound_to() {
            mouseClick(pill)
            compare(root.told, [true])
            compare(pill.isOn, false)
            pill.isOn = true
            mouseClick(pill)
            compare(root.told, [true, false])
        }

        function test_the_knob_of_a_pill_shows_where_it_stands() {
            const knob = pill.background.children[0]
            const off = knob.x
            pill.isOn = true
            verify(knob.x > off + 15)
            verify(knob.x + knob.width < pill.width)
        }

        function test_hold_and_smart_hold_are_two_switches() {
            mouseClick(Tree.named(holdTile, "Hold", "TogglePill"))
            compare([root.hold, root.smartHold], [true, false])
            mouseClick(Tree.named(holdTile, "Smart Hold", "TogglePill"))
            compare([root.hold, root.smartHold], [true, true])
            mouseClick(Tree.named(holdTile, "Hold", "TogglePill"))
            compare([root.hold, root.smartHold], [false, true])
            verify(Tree.named(holdTile, "Smart Hold", "TogglePill").isOn)
            compare(holdTile.help, HelpTexts.hold)
        }

        function test_bassnote_and_how_deep_it_lies() {
            mouseClick(Tree.named(bassTile, "Bassnote", "TogglePill"))
            verify(root.bass)
            mouseClick(Tree.textItem(bassTile, "-2"))
            compare(root.octaveDown, 2)
            mouseClick(Tree.textItem(bassTile, "-1"))
            compare(root.octaveDown, 1)
            verify(root.bass)
            compare(bassTile.help, HelpTexts.bassnote)
        }
    }
}
