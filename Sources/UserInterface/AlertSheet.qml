import QtQuick
import QtQuick.Templates as T
import Tavro

// Tells what went wrong, over everything else, until the user has read it.
T.Popup {
    id: root

    property string title
    property string text

    // The window draws it outside the scaled content.
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: parent ? Math.min(480, parent.width - 48) : 480
    implicitHeight: contentItem.implicitHeight + 2 * padding
    padding: 24
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    // For screen readers it is its content; the item around that has no name.
    Component.onCompleted: contentItem.parent.Accessible.ignored = true

    T.Overlay.modal: Rectangle {
        color: "#B00D0F12"
    }

    background: Rectangle {
        radius: Theme.tileRadius
        color: Theme.panel
        border.width: 1
        border.color: Theme.strongHairline
    }

    contentItem: Column {
        spacing: 12
        Accessible.role: Accessible.AlertMessage
        Accessible.name: root.title
        Accessible.description: root.text

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            color: Theme.text
            font.pixelSize: 18
            font.weight: Font.Bold
        }

        Text {
            width: parent.width
            text: root.text
            textFormat: Text.PlainText
            // Names of files break anywhere.
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            maximumLineCount: 12
            elide: Text.ElideRight
            color: Theme.secondaryText
            font.pixelSize: Theme.controlSize
            lineHeight: 1.25
        }

        SheetButton {
            anchors.right: parent.right
            focus: true
            isProminent: true
            text: qsTr("OK")
            Keys.onReturnPressed: root.close()
            Keys.onEnterPressed: root.close()
            onClicked: root.close()
        }
    }
}
