import QtQuick
import QtQuick.Controls
import QtTest
import Tavro
import "tree.js" as Tree

Item {
    id: root

    property int clicks: 0

    width: 400
    height: 200

    IconButton {
        id: icon

        x: 20
        y: 20
        label: "Save preset"
        symbol: "square.and.arrow.down"
        onClicked: ++root.clicks
    }

    StopButton {
        id: stop

        x: 120
        y: 20
        onClicked: ++root.clicks
    }

    RecordButton {
        id: record

        x: 220
        y: 20
        onClicked: ++root.clicks
    }

    TestCase {
        name: "Buttons"
        when: windowShown

        function init() {
            mouseMove(root, 390, 190)
            record.isRecording = false
            root.clicks = 0
        }

        function symbol(button) {
            return Tree.find(button, one => String(one).startsWith("tavro::SymbolItem"))
        }

        function test_click_data() {
            return [{ tag: "icon", button: icon }, { tag: "stop", button: stop }, { tag: "record", button: record }]
        }

        function test_click(data) {
            mouseClick(data.button)
            compare(root.clicks, 1)
            // Let go elsewhere, it is none.
            mousePress(data.button, 10, 10)
            mouseMove(root, 390, 190)
            mouseRelease(root, 390, 190)
            compare(root.clicks, 1)
        }

        function test_names_data() {
            return [
                { tag: "icon", button: icon, name: "Save preset", symbol: "square.and.arrow.down" },
                { tag: "stop", button: stop, name: "Stop all notes", symbol: "stop.circle.fill" },
                { tag: "record", button: record, name: "Record a hotkey", symbol: "record.circle.fill" }
            ]
        }

        function test_names(data) {
            compare(data.button.Accessible.name, data.name)
            compare(symbol(data.button).name, data.symbol)
            mouseMove(data.button, 10, 10)
            tryVerify(() => Tree.textItem(root.Overlay.overlay, data.name) !== undefined)
            compare(Tree.textItem(root.Overlay.overlay, data.name).lineCount, 1)
            mouseMove(root, 390, 190)
            tryVerify(() => Tree.textItem(root.Overlay.overlay, data.name) === undefined)
        }

        function test_recording_is_to_be_seen() {
            const before = String(record.background.color)
            record.isRecording = true
            verify(String(record.background.color) !== before)
            compare(record.Accessible.name, "Stop recording the hotkey")
        }
    }
}
