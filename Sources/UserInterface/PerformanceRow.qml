import QtQuick
import Tavro

// The settings that are changed while playing.
Row {
    id: root

    required property PerformanceSettings settings
    required property PickerChoices pickerChoices

    spacing: Theme.gap

    ControlTile {
        title: qsTr("Root")
        help: HelpTexts.root
        width: 150

        Picker {
            anchors.fill: parent
            label: qsTr("Root")
            choices: root.pickerChoices.roots
            value: root.settings.rootSemitone
            onChosen: value => root.settings.rootSemitone = value
        }
    }

    ControlTile {
        title: qsTr("Scale")
        help: HelpTexts.scale
        width: 196

        Picker {
            anchors.fill: parent
            label: qsTr("Scale")
            choices: root.pickerChoices.scales
            value: root.settings.scaleName
            onChosen: value => root.settings.scaleName = value
        }
    }

    SliderTile {
        title: qsTr("Octave")
        help: HelpTexts.octave
        width: 184
        isCentered: true
        from: -3
        to: 3
        value: root.settings.globalOctaveOffset
        defaultValue: root.settings.defaults.globalOctaveOffset
        onChosen: value => root.settings.globalOctaveOffset = value
    }

    ControlTile {
        title: qsTr("Chord")
        help: HelpTexts.chord
        width: 170

        TogglePill {
            id: chordSwitch

            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Chord")
            isOn: root.settings.chordEnabled
            onToggledTo: isOn => root.settings.chordEnabled = isOn
        }

        Text {
            anchors.left: chordSwitch.right
            anchors.leftMargin: 12
            anchors.verticalCenter: parent.verticalCenter
            text: root.settings.chordMode
            color: root.settings.chordEnabled ? Theme.text : Theme.secondaryText
            font.pixelSize: Theme.controlSize
            Accessible.role: Accessible.StaticText
            Accessible.name: qsTr("Chord: %1").arg(text)
        }
    }

    SliderTile {
        title: qsTr("Velocity")
        help: HelpTexts.velocity
        width: 236
        from: 1
        to: 127
        value: root.settings.velocity
        defaultValue: root.settings.defaults.velocity
        onChosen: value => root.settings.velocity = value
    }

    SliderTile {
        title: qsTr("Humanize")
        help: HelpTexts.humanize
        width: 236
        from: 0
        to: 30
        value: root.settings.humanizeVelocity
        defaultValue: root.settings.defaults.humanizeVelocity
        onChosen: value => root.settings.humanizeVelocity = value
    }
}
