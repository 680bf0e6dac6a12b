import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

// Opens the menu of the application, and listens to its shortcuts also while it is closed.
T.AbstractButton {
    id: root

    required property MainMenuPresenter menu
    readonly property bool isOpen: list.visible

    implicitWidth: 40
    implicitHeight: 40
    visible: menu.isInWindow
    // A field that is being edited goes on being edited: the menu may be opened for its sake.
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: qsTr("Menu")
    onClicked: isOpen ? list.close() : open()

    function open() {
        menu.refresh()
        list.open()
    }

    function perform(action) {
        list.close()
        menu.perform(action)
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down || root.hovered || root.isOpen ? Theme.raised : Theme.panel
        border.width: 1
        border.color: Theme.strongHairline

        Column {
            anchors.centerIn: parent
            spacing: 4

            Repeater {
                model: 3

                Rectangle {
                    width: 18
                    height: 2
                    radius: 1
                    color: Theme.text
                }
            }
        }
    }

    // Each entry's key, wherever the keyboard is in the program.
    Instantiator {
        model: root.menu.isInWindow ? root.menu.shortcuts : []

        Shortcut {
            required property var modelData

            sequences: [modelData.sequence]
            enabled: root.menu.entries[modelData.index].isEnabled
            autoRepeat: false
            context: Qt.ApplicationShortcut
            onActivated: root.perform(modelData.action)
        }
    }

    T.Popup {
        id: list

        parent: root
        y: root.height + 4
        width: 280
        implicitHeight: Math.min(view.contentHeight + 12, root.Window.height / Math.max(scale, 0.01) - 16)
        padding: 6
        margins: 8
        focus: !root.menu.isEditingText
        transformOrigin: T.Popup.TopLeft
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent
        // For screen readers it is its content; the item around that has no name.
        Component.onCompleted: contentItem.parent.Accessible.ignored = true
        onAboutToShow: {
            // The list is drawn above everything, outside the scaled content.
            scale = root.mapToItem(null, 1, 0).x - root.mapToItem(null, 0, 0).x
            view.currentIndex = -1
            view.positionViewAtBeginning()
        }

        background: Rectangle {
            radius: Theme.controlRadius + 2
            color: Theme.inset
            border.width: 1
            border.color: Theme.strongHairline
        }

        contentItem: ListView {
            id: view

            // The next entry that can be used, in this direction; the same one when there is none.
            function move(step) {
                let index = currentIndex < 0 && step < 0 ? count : currentIndex
                do
                    index += step
                while (index >= 0 && index < count && !root.menu.entries[index].isEnabled)
                if (index >= 0 && index < count)
                    currentIndex = index
            }

            function performCurrent() {
                const entry = root.menu.entries[currentIndex]
                if (entry !== undefined && entry.isEnabled)
                    root.perform(entry.action)
            }

            clip: true
            focus: true
            model: root.menu.entries
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            keyNavigationEnabled: false
            Accessible.role: Accessible.PopupMenu
            Accessible.name: qsTr("Menu")
            Keys.onUpPressed: move(-1)
            Keys.onDownPressed: move(1)
            Keys.onReturnPressed: performCurrent()
            Keys.onEnterPressed: performCurrent()
            Keys.onSpacePressed: performCurrent()

            delegate: MainMenuEntry {
                required property var modelData
                required property int index

                entry: modelData
                isFirst: index === 0
                width: ListView.view.width
                isCurrent: view.currentIndex === index
                onPointedAt: view.currentIndex = index
                onClicked: root.perform(entry.action)
            }
        }
    }
}
