import QtQuick
import QtQuick.Window
import QtQuick.Templates as T
import Tavro

// Offers an update. Closing it only hides it.
T.ApplicationWindow {
    id: root

    // An UpdateViewModel.
    property QtObject model: null
    readonly property bool isInstalling: model?.isInstalling ?? false

    title: qsTr("TAVRO Update")
    color: Theme.surface
    flags: Qt.Dialog | Qt.CustomizeWindowHint | Qt.WindowTitleHint | Qt.WindowCloseButtonHint
    width: 520
    height: 410
    minimumWidth: width
    maximumWidth: width
    minimumHeight: height
    maximumHeight: height

    function dismiss() {
        if (!isInstalling)
            close()
    }

    function install() {
        if (!isInstalling)
            model?.install()
    }

    // Whatever has the keyboard: the button is the default one.
    Shortcut {
        sequences: ["Return", "Enter"]
        autoRepeat: false
        onActivated: root.install()
    }

    Shortcut {
        sequences: ["Escape"]
        onActivated: root.dismiss()
    }

    Rectangle {
        id: icon

        x: Theme.margin
        y: 20
        width: 56
        height: 56
        radius: 14
        color: Theme.inset
        border.width: 1
        border.color: Theme.strongHairline

        Symbol {
            anchors.centerIn: parent
            width: 30
            height: 30
            name: "arrow.down.circle"
            color: Theme.text
        }
    }

    Column {
        anchors.left: icon.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: Theme.margin
        anchors.verticalCenter: icon.verticalCenter
        spacing: 3

        Text {
            width: parent.width
            text: qsTr("TAVRO Update")
            textFormat: Text.PlainText
            color: Theme.text
            font.pixelSize: 24
            font.weight: Font.Bold
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            objectName: "versions"
            width: parent.width
            text: (root.model?.installedVersion ?? "") + qsTr("  to  ") + (root.model?.offeredVersion ?? "")
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            color: Theme.accent
            font.pixelSize: 13
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Text {
        id: heading

        anchors.left: icon.left
        anchors.top: icon.bottom
        anchors.topMargin: 18
        text: qsTr("What's new")
        textFormat: Text.PlainText
        color: Theme.text
        font.pixelSize: 17
        font.weight: Font.Bold
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        anchors.top: heading.bottom
        anchors.topMargin: 10
        anchors.bottom: foot.top
        anchors.bottomMargin: 14
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        radius: Theme.tileRadius
        color: Theme.panel
        border.width: 1
        border.color: Theme.strongHairline

        ListView {
            id: notes

            objectName: "notes"
            anchors.fill: parent
            anchors.margins: 1
            topMargin: 15
            bottomMargin: 15
            leftMargin: 15
            rightMargin: 15
            spacing: 10
            clip: true
            activeFocusOnTab: true
            boundsBehavior: Flickable.StopAtBounds
            model: root.model?.releaseNotes ?? []
            Accessible.role: Accessible.List
            Accessible.name: heading.text
            Keys.onUpPressed: scrollBar.decrease()
            Keys.onDownPressed: scrollBar.increase()

            delegate: Row {
                id: note

                required property string modelData

                width: ListView.view.width - 30
                spacing: 9
                Accessible.role: Accessible.ListItem
                Accessible.name: modelData

                Text {
                    id: bullet

                    text: "•"
                    textFormat: Text.PlainText
                    color: Theme.secondaryText
                    font.pixelSize: Theme.controlSize
                }

                Text {
                    width: parent.width - bullet.width - parent.spacing
                    text: note.modelData
                    // Whatever the feed says is text and nothing more.
                    textFormat: Text.PlainText
                    wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                    color: Theme.text
                    font.pixelSize: Theme.controlSize
                    lineHeight: 1.2
                }
            }

            T.ScrollBar.vertical: T.ScrollBar {
                id: scrollBar

                policy: size < 1 ? T.ScrollBar.AlwaysOn : T.ScrollBar.AlwaysOff
                visible: policy === T.ScrollBar.AlwaysOn
                stepSize: 0.1
                padding: 3

                contentItem: Rectangle {
                    implicitWidth: 5
                    radius: 2.5
                    color: Theme.raised
                }
            }
        }
    }

    Column {
        id: foot

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.leftMargin: Theme.margin
        anchors.rightMargin: Theme.margin
        anchors.bottomMargin: 20
        spacing: 10

        UpdateProgressBar {
            objectName: "progress"
            width: parent.width
            visible: root.isInstalling
            progress: root.model?.progress ?? -1
            text: root.model?.progressText ?? ""
        }

        Text {
            objectName: "status"
            width: parent.width
            visible: text !== ""
            text: root.model?.status ?? ""
            textFormat: Text.PlainText
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            // What a tool has to say may be long.
            maximumLineCount: 5
            elide: Text.ElideRight
            color: Theme.text
            opacity: 0.66
            font.pixelSize: 12
            font.weight: Font.Medium
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Row {
            anchors.right: parent.right
            spacing: Theme.gap

            SheetButton {
                objectName: "later"
                text: qsTr("Later")
                enabled: !root.isInstalling
                onClicked: root.dismiss()
            }

            SheetButton {
                objectName: "install"
                implicitWidth: contentItem.implicitWidth + 36
                isProminent: true
                text: qsTr("Download and Open Installer")
                enabled: !root.isInstalling
                onClicked: root.install()
            }
        }
    }
}
