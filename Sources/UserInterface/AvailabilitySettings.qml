import QtQuick
import Tavro

// How the program is at hand: Global Play with its switch, how it stands, the start at login, and the hotkey.
Item {
    id: root

    required property GlobalPlayPresenter globalPlay
    // With one property, isEnabled.
    required property QtObject launchAtLogin

    implicitHeight: 38

    component Label: Text {
        anchors.verticalCenter: parent.verticalCenter
        color: Theme.secondaryText
        font.pixelSize: Theme.secondarySize
        font.weight: Font.DemiBold
    }

    Label {
        id: title

        text: qsTr("Global Play")
    }

    TogglePill {
        id: toggle

        anchors.left: title.right
        anchors.leftMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        label: title.text
        isOn: root.globalPlay.isOn
        onToggledTo: isOn => root.globalPlay.isOn = isOn
    }

    Column {
        anchors.left: toggle.right
        anchors.leftMargin: 16
        anchors.right: loginLabel.left
        anchors.rightMargin: 28
        anchors.verticalCenter: parent.verticalCenter

        Text {
            width: parent.width
            text: root.globalPlay.statusText
            textFormat: Text.PlainText
            elide: Text.ElideRight
            color: Theme.text
            font.pixelSize: Theme.secondarySize
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        Text {
            width: parent.width
            visible: text.length > 0
            text: root.globalPlay.advice
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            maximumLineCount: 2
            elide: Text.ElideRight
            color: Theme.secondaryText
            font.pixelSize: 12
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Label {
        id: loginLabel

        anchors.right: login.left
        anchors.rightMargin: 14
        text: qsTr("Launch at Login")
    }

    TogglePill {
        id: login

        anchors.right: hotkeyLabel.left
        anchors.rightMargin: 28
        anchors.verticalCenter: parent.verticalCenter
        label: loginLabel.text
        isOn: root.launchAtLogin.isEnabled
        onToggledTo: isOn => root.launchAtLogin.isEnabled = isOn
    }

    Label {
        id: hotkeyLabel

        anchors.right: hotkey.left
        anchors.rightMargin: 14
        text: qsTr("Global Play Hotkey")
    }

    Rectangle {
        id: hotkey

        anchors.right: record.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 158
        height: 38
        radius: Theme.controlRadius
        color: Theme.inset
        border.width: 1
        border.color: root.globalPlay.isRecordingHotkey ? Theme.stop : Theme.strongHairline

        Text {
            anchors.fill: parent
            anchors.leftMargin: 12
            anchors.rightMargin: 12
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: root.globalPlay.isRecordingHotkey ? qsTr("Press a key") : root.globalPlay.displayedHotkey
            textFormat: Text.PlainText
            elide: Text.ElideMiddle
            color: Theme.text
            font.pixelSize: Theme.controlSize
            font.weight: Font.DemiBold
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    RecordButton {
        id: record

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        isRecording: root.globalPlay.isRecordingHotkey
        onClicked: root.globalPlay.isRecordingHotkey = !isRecording
    }
}
