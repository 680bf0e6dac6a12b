import QtQuick
import QtQuick.Templates as T
import Tavro

// A few words about the item that it stands in, near it and in the size of the surface.
Item {
    id: root

    property string text
    property bool isWanted: false
    property int delay: 350

    anchors.fill: parent

    Loader {
        id: loader

        active: false

        sourceComponent: T.ToolTip {
            id: tip

            // Popups are drawn outside the scaled surface.
            property real unit: 1

            parent: root
            visible: root.isWanted && root.text.length > 0
            delay: root.delay
            text: root.text
            x: 0
            y: root.height + 6
            margins: 8
            padding: 12 * unit
            implicitWidth: Math.min(320 * unit, words.implicitWidth + 2 * padding + 1)
            implicitHeight: words.implicitHeight + 2 * padding
            closePolicy: T.Popup.NoAutoClose
            onAboutToShow: unit = root.mapToItem(null, 1, 0).x - root.mapToItem(null, 0, 0).x

            background: Rectangle {
                radius: Theme.controlRadius
                color: Theme.raised
                border.width: 1
                border.color: Theme.tipLine
            }

            contentItem: Text {
                id: words

                text: tip.text
                textFormat: Text.PlainText
                // One that may wrap keeps the lines of a width that it had before it was shown.
                wrapMode: oneLine.advanceWidth > 320 * tip.unit - 2 * tip.padding ? Text.Wrap : Text.NoWrap
                lineHeight: 1.2
                color: Theme.text
                font.pixelSize: Math.max(11, Theme.secondarySize * tip.unit)

                TextMetrics {
                    id: oneLine

                    font: words.font
                    text: tip.text
                }
            }
        }
    }

    // Made when it is first wanted: there are many marks, and most are never looked at.
    onIsWantedChanged: if (isWanted) loader.active = true
}
