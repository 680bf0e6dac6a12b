import QtQuick
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property var told: []

    width: 300
    height: 100

    SegmentedChoice {
        id: choice

        x: 20
        y: 20
        label: "Depth"
        choices: [{ text: "-1", value: 1 }, { text: "-2", value: 2 }, { text: "-3", value: 3 }]
        value: 2
        onChosen: value => root.told.push(value)
    }

    TestCase {
        name: "SegmentedChoice"
        when: windowShown

        function segments() {
            return Tree.all(choice).filter(one => one.isChosen !== undefined)
        }

        function test_shows_the_chosen_one() {
            compare(segments().map(one => one.isChosen), [false, true, false])
            choice.value = 3
            compare(segments().map(one => one.isChosen), [false, false, true])
            choice.value = 7
            compare(segments().map(one => one.isChosen), [false, false, false])
            choice.value = 2
        }

        function test_a_click_asks_for_one() {
            root.told = []
            for (const segment of segments())
                mouseClick(segment)
            compare(root.told, [1, 2, 3])
            // What it shows is up to whom it is bound to.
            compare(choice.value, 2)
        }

        function test_is_as_wide_as_its_segments() {
            for (const segment of segments()) {
                const left = segment.mapToItem(choice, 0, 0).x
                verify(left >= 3 && left + segment.width <= choice.width - 3)
            }
        }
    }
}
