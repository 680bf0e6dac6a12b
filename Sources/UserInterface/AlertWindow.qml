import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

// Tells one thing in a window of its own; the other windows wait until it was read.
T.ApplicationWindow {
    id: root

    property string message
    property string informativeText

    title: qsTr("TAVRO")
    color: Theme.panel
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    modality: Qt.ApplicationModal
    width: 420
    minimumWidth: width
    maximumWidth: width
    onNeededHeightChanged: fit()
    Component.onCompleted: fit()

    readonly property real neededHeight: content.height + 2 * Theme.margin

    // The limits first: a height outside of them would be cut to the old ones.
    function fit() {
        minimumHeight = 0
        maximumHeight = 10000
        height = neededHeight
        minimumHeight = neededHeight
        maximumHeight = neededHeight
    }

    Shortcut {
        sequences: ["Return", "Enter", "Escape"]
        autoRepeat: false
        onActivated: root.close()
    }

    Column {
        id: content

        x: Theme.margin
        y: Theme.margin
        width: parent.width - 2 * Theme.margin
        spacing: 12
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.message
        Accessible.description: root.informativeText

        Text {
            objectName: "message"
            width: parent.width
            text: root.message
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: 18
            font.weight: Font.Bold
        }

        Text {
            objectName: "informativeText"
            width: parent.width
            text: root.informativeText
            textFormat: Text.PlainText
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            maximumLineCount: 12
            elide: Text.ElideRight
            color: Theme.secondaryText
            font.pixelSize: Theme.controlSize
            lineHeight: 1.25
        }

        SheetButton {
            objectName: "ok"
            anchors.right: parent.right
            isProminent: true
            text: qsTr("OK")
            onClicked: root.close()
        }
    }
}
