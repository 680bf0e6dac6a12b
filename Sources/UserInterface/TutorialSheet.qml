import QtQuick
import QtQuick.Templates as T
import Tavro

// The quick tour, over the dimmed window.
T.Popup {
    id: root

    required property TutorialPresenter tutorial

    readonly property int roomyHeight: 480
    readonly property bool isTight: height < roomyHeight

    // Outside the scaled content, so that the texts can be read in a small window too: there the sheet gives up
    // room between them instead.
    parent: T.Overlay.overlay
    anchors.centerIn: parent
    width: 600
    height: parent ? Math.min(roomyHeight, parent.height - 16) : roomyHeight
    padding: 24
    modal: true
    focus: true
    closePolicy: T.Popup.CloseOnEscape
    visible: tutorial.isTutorialVisible
    // However it was closed.
    onAboutToHide: tutorial.dismiss()
    // For screen readers it is its content; the item around that has no name.
    Component.onCompleted: contentItem.parent.Accessible.ignored = true

    T.Overlay.modal: Rectangle {
        color: "#C00D0F12"
    }

    background: Rectangle {
        radius: 16
        color: Theme.panel
        border.width: 1
        border.color: Theme.strongHairline
    }

    contentItem: Item {
        id: page

        Accessible.role: Accessible.Dialog
        Accessible.name: root.tutorial.step.title
        Accessible.description: root.tutorial.step.body + " " + root.tutorial.step.note
        // A key that is kept down must not run through the tour and end it.
        Keys.onReturnPressed: event => { if (!event.isAutoRepeat) root.tutorial.proceed() }
        Keys.onEnterPressed: event => { if (!event.isAutoRepeat) root.tutorial.proceed() }
        Keys.onRightPressed: root.tutorial.next()
        Keys.onLeftPressed: root.tutorial.back()

        Text {
            anchors.verticalCenter: skip.verticalCenter
            text: root.tutorial.progressText
            textFormat: Text.PlainText
            color: Theme.secondaryText
            font.pixelSize: Theme.secondarySize
            font.weight: Font.Bold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        T.AbstractButton {
            id: skip

            anchors.right: parent.right
            anchors.rightMargin: -8
            implicitWidth: skipText.implicitWidth + 16
            implicitHeight: 28
            hoverEnabled: true
            text: qsTr("Skip")
            Accessible.role: Accessible.Button
            Accessible.name: text
            onClicked: root.tutorial.skip()

            background: Rectangle {
                radius: Theme.controlRadius
                color: skip.hovered || skip.down ? Theme.inset : "transparent"
                border.width: skip.visualFocus ? 2 : 0
                border.color: Theme.secondaryText
            }

            contentItem: Item {
                Text {
                    id: skipText

                    anchors.centerIn: parent
                    text: skip.text
                    textFormat: Text.PlainText
                    color: Theme.text
                    opacity: skip.hovered || skip.down || skip.visualFocus ? 1 : 0.62
                    font.pixelSize: Theme.secondarySize
                    font.weight: Font.DemiBold
                }
            }
        }

        Rectangle {
            id: circle

            anchors.horizontalCenter: parent.horizontalCenter
            y: root.isTight ? 34 : 42
            width: root.isTight ? 60 : 88
            height: width
            radius: width / 2
            color: Theme.melodyFill

            Symbol {
                anchors.centerIn: parent
                width: 38
                height: 38
                name: root.tutorial.step.symbol
                color: Theme.text
            }
        }

        Text {
            id: title

            anchors.top: circle.bottom
            anchors.topMargin: root.isTight ? 10 : 16
            width: parent.width
            text: root.tutorial.step.title
            textFormat: Text.PlainText
            horizontalAlignment: Text.AlignHCenter
            color: Theme.text
            font.pixelSize: 28
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            id: body

            anchors.top: title.bottom
            anchors.topMargin: 12
            anchors.horizontalCenter: parent.horizontalCenter
            width: 496
            text: root.tutorial.step.body
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.text
            opacity: 0.82
            font.pixelSize: 16
            font.weight: Font.Medium
            lineHeight: 1.3
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            anchors.top: body.bottom
            anchors.topMargin: 8
            anchors.horizontalCenter: parent.horizontalCenter
            width: body.width
            visible: text.length > 0
            text: root.tutorial.step.note
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            horizontalAlignment: Text.AlignHCenter
            color: Theme.secondaryText
            font.pixelSize: Theme.secondarySize
            lineHeight: 1.25
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            anchors.bottom: next.top
            anchors.bottomMargin: root.isTight ? 16 : 22
            spacing: 8
            Accessible.role: Accessible.Indicator
            Accessible.name: root.tutorial.progressText

            Repeater {
                model: root.tutorial.steps.length

                Rectangle {
                    required property int index
                    readonly property bool isCurrent: index === root.tutorial.stepIndex

                    width: isCurrent ? 20 : 8
                    height: 8
                    radius: 4
                    color: isCurrent ? Theme.accent : Theme.quietText
                }
            }
        }

        SheetButton {
            anchors.left: parent.left
            anchors.bottom: parent.bottom
            text: qsTr("Back")
            enabled: !root.tutorial.isFirstStep
            // A disabled button would keep the keys to itself.
            onEnabledChanged: if (!enabled) next.forceActiveFocus()
            onClicked: root.tutorial.back()
        }

        SheetButton {
            id: next

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            focus: true
            isProminent: true
            text: root.tutorial.isLastStep ? qsTr("Done") : qsTr("Next")
            onClicked: root.tutorial.proceed()
        }
    }
}
