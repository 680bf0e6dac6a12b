import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

// One of several choices, which open as a list; entries have a text and a value.
T.AbstractButton {
    id: root

    property var choices: []
    property var value
    property string label
    readonly property int chosenIndex: choices.findIndex(choice => choice.value === value)
    signal chosen(var value)
    // Before the list shows, for who wants to bring the choices up to date.
    signal opening

    implicitWidth: 160
    implicitHeight: 38
    leftPadding: 14
    rightPadding: 34
    focusPolicy: Qt.ClickFocus
    // For screen readers it is what its background says: the button would make itself one of the plain ones.
    Accessible.ignored: true
    onClicked: {
        opening()
        list.open()
    }

    function choose(index) {
        const choice = choices[index]
        list.close()
        if (choice !== undefined)
            chosen(choice.value)
    }

    background: Rectangle {
        radius: Theme.controlRadius
        color: root.down || list.visible ? Theme.raised : Theme.inset
        border.width: 1
        border.color: Theme.strongHairline
        Accessible.role: Accessible.ComboBox
        Accessible.name: root.label
        Accessible.description: root.contentItem.text
        Accessible.onPressAction: root.clicked()
    }

    contentItem: Text {
        text: root.chosenIndex >= 0 ? root.choices[root.chosenIndex].text : ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        color: Theme.text
        font.pixelSize: Theme.controlSize
        font.weight: Font.Medium
    }

    // The arrow: two strokes that meet below.
    Item {
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        width: 12
        height: 8

        Repeater {
            model: [-1, 1]

            Rectangle {
                required property int modelData
                x: modelData < 0 ? -0.5 : 4.5
                y: 3
                width: 8
                height: 2
                radius: 1
                color: Theme.secondaryText
                rotation: modelData < 0 ? 45 : -45
                antialiasing: true
            }
        }
    }

    T.Popup {
        id: list

        // Above the control when there is more room than below.
        property bool opensUpwards: false

        y: opensUpwards ? -height - 4 : root.height + 4
        width: Math.max(root.width, 120)
        implicitHeight: Math.min(view.contentHeight + 12, 436)
        padding: 6
        margins: 8
        focus: true
        transformOrigin: opensUpwards ? T.Popup.BottomLeft : T.Popup.TopLeft
        closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutside
        // For screen readers it is its content; the item around that has no name.
        Component.onCompleted: contentItem.parent.Accessible.ignored = true
        onAboutToShow: {
            // The list is drawn above everything, outside the scaled content.
            scale = root.mapToItem(null, 1, 0).x - root.mapToItem(null, 0, 0).x
            const bottom = root.mapToItem(null, 0, root.height).y
            opensUpwards = bottom + (implicitHeight + 12) * scale > root.Window.height && bottom > root.Window.height / 2
            view.currentIndex = root.chosenIndex
            view.positionViewAtIndex(Math.max(0, root.chosenIndex), ListView.Center)
        }

        background: Rectangle {
            radius: Theme.controlRadius + 2
            color: Theme.inset
            border.width: 1
            border.color: Theme.strongHairline
        }

        contentItem: ListView {
            id: view

            clip: true
            focus: true
            model: root.choices
            boundsBehavior: Flickable.StopAtBounds
            highlightMoveDuration: 0
            Accessible.role: Accessible.List
            Accessible.name: root.label
            Keys.onReturnPressed: root.choose(currentIndex)
            Keys.onEnterPressed: root.choose(currentIndex)
            Keys.onSpacePressed: root.choose(currentIndex)

            delegate: T.ItemDelegate {
                id: entry

                required property var modelData
                required property int index

                width: ListView.view.width
                height: 32
                leftPadding: 10
                rightPadding: 10
                hoverEnabled: true
                focusPolicy: Qt.NoFocus
                Accessible.name: modelData.text
                onHoveredChanged: if (hovered) view.currentIndex = index
                onClicked: root.choose(index)

                background: Rectangle {
                    radius: 6
                    color: view.currentIndex === entry.index ? Theme.raised : "transparent"
                }
                contentItem: Text {
                    text: entry.modelData.text
                    textFormat: Text.PlainText
                    elide: Text.ElideRight
                    verticalAlignment: Text.AlignVCenter
                    color: Theme.text
                    font.pixelSize: Theme.controlSize
                    font.weight: entry.index === root.chosenIndex ? Font.DemiBold : Font.Normal
                }
            }
        }
    }
}
