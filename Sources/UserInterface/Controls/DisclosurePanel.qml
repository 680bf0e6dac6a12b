import QtQuick
import QtQuick.Templates as T
import Tavro

// A panel that opens below its title. Closed, it tells its settings in one quiet line.
Rectangle {
    id: root

    property string title
    property string summary
    property bool isVisible: false
    property int closedHeight: 0
    property int openHeight: 0
    default property alias content: content.data
    signal toggledTo(bool isVisible)

    implicitHeight: isVisible ? openHeight : closedHeight
    radius: Theme.tileRadius
    color: Theme.panel
    border.width: 1
    border.color: Theme.hairline

    T.AbstractButton {
        id: header

        width: parent.width
        height: root.closedHeight
        hoverEnabled: true
        focusPolicy: Qt.ClickFocus
        Accessible.role: Accessible.Button
        Accessible.name: root.title
        Accessible.description: root.isVisible ? qsTr("Open") : qsTr("Closed: %1").arg(root.summary)
        Accessible.checkable: true
        Accessible.checked: root.isVisible
        onClicked: root.toggledTo(!root.isVisible)

        contentItem: Item {
            Symbol {
                id: chevron

                x: Theme.padding - 3
                anchors.verticalCenter: parent.verticalCenter
                width: 16
                height: 16
                name: root.isVisible ? "chevron.down" : "chevron.right"
                color: title.color
            }

            Text {
                id: title

                anchors.left: chevron.right
                anchors.leftMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                text: root.title
                color: header.hovered ? Theme.text : Theme.secondaryText
                font.pixelSize: Theme.controlSize
                font.weight: Font.DemiBold
            }

            Text {
                anchors.left: title.right
                anchors.leftMargin: 40
                anchors.right: parent.right
                anchors.rightMargin: Theme.padding
                anchors.verticalCenter: parent.verticalCenter
                visible: !root.isVisible
                horizontalAlignment: Text.AlignRight
                text: root.summary
                textFormat: Text.PlainText
                elide: Text.ElideRight
                color: Theme.quietText
                font.pixelSize: Theme.secondarySize
            }
        }
    }

    Item {
        id: content

        visible: root.isVisible
        y: root.closedHeight
        width: parent.width
        height: root.openHeight - root.closedHeight
    }
}
