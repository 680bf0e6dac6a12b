import QtQuick
import Tavro

// A tile for one number, which is dragged or typed.
ControlTile {
    id: root

    property int from: 0
    property int to: 100
    property int value: 0
    property int defaultValue: 0
    property bool isCentered: false
    property string suffix
    property string zeroText
    signal chosen(int value)

    Loader {
        anchors.left: parent.left
        anchors.right: number.left
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        sourceComponent: root.isCentered ? centered : plain
    }

    Component {
        id: plain

        CleanValueSlider {
            label: root.title
            valueText: number.shownText
            from: root.from
            to: root.to
            value: root.value
            defaultValue: root.defaultValue
            onChosen: value => root.chosen(value)
        }
    }

    Component {
        id: centered

        CenteredValueSlider {
            label: root.title
            valueText: number.shownText
            from: root.from
            to: root.to
            value: root.value
            defaultValue: root.defaultValue
            onChosen: value => root.chosen(value)
        }
    }

    EditableNumericValue {
        id: number

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: root.suffix === "" ? 48 : 64
        label: root.title
        from: root.from
        to: root.to
        value: root.value
        suffix: root.suffix
        zeroText: root.zeroText
        onChosen: value => root.chosen(value)
    }
}
