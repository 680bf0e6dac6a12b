import QtQuick
import Tavro

// How chords are built and spread, and the melody rows.
Row {
    id: root

    required property PerformanceSettings settings

    SliderTile {
        title: qsTr("Chord Complexity")
        help: HelpTexts.chordComplexity
        width: 320
        hasFrame: false
        showsDivider: true
        from: 0
        to: 100
        value: root.settings.chordComplexity
        defaultValue: root.settings.defaults.chordComplexity
        onChosen: value => root.settings.chordComplexity = value
    }

    SliderTile {
        title: qsTr("Note Limit")
        help: HelpTexts.noteLimit
        width: 240
        hasFrame: false
        showsDivider: true
        from: 0
        to: 16
        zeroText: qsTr("Off")
        value: root.settings.maxChordNotes
        defaultValue: root.settings.defaults.maxChordNotes
        onChosen: value => root.settings.maxChordNotes = value
    }

    SliderTile {
        title: qsTr("Strum")
        help: HelpTexts.strum
        width: 290
        hasFrame: false
        showsDivider: true
        isCentered: true
        from: -50
        to: 50
        suffix: qsTr(" ms")
        value: root.settings.strumMilliseconds
        defaultValue: root.settings.defaults.strumMilliseconds
        onChosen: value => root.settings.strumMilliseconds = value
    }

    ControlTile {
        title: qsTr("Split Mode")
        help: HelpTexts.splitMode
        width: 150
        hasFrame: false
        showsDivider: true

        TogglePill {
            anchors.verticalCenter: parent.verticalCenter
            label: qsTr("Split Mode")
            isOn: root.settings.splitMode
            onToggledTo: isOn => root.settings.splitMode = isOn
        }
    }

    SliderTile {
        title: qsTr("Melody Octave")
        help: HelpTexts.melodyOctave
        width: 232
        hasFrame: false
        isCentered: true
        from: -3
        to: 3
        value: root.settings.melodyOctaveOffset
        defaultValue: root.settings.defaults.melodyOctaveOffset
        onChosen: value => root.settings.melodyOctaveOffset = value
    }
}
