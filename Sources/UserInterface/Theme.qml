pragma Singleton
import QtQuick

// Colours and measures of the window. The accent is for what sounds or is on, and for nothing else.
QtObject {
    readonly property color surface: "#0D0F12"
    readonly property color bed: "#111317"
    readonly property color panel: "#16181C"
    readonly property color inset: "#1E2126"
    readonly property color raised: "#30353D"
    readonly property color hairline: "#262A30"
    readonly property color strongHairline: "#30353D"

    readonly property color accent: "#39F34A"
    readonly property color accentLetter: "#0D0F12"
    readonly property color litFill: "#1C3A22"
    readonly property color melody: "#4FC3FF"
    readonly property color melodyFill: "#15222B"
    readonly property color melodyLine: "#2B4C60"
    readonly property color stop: "#FF5A5F"
    readonly property color stopFill: "#3A1518"
    readonly property color stopLine: "#7A2A2E"

    readonly property color tipLine: "#4A515C"

    readonly property color text: "#F2F4F6"
    readonly property color secondaryText: "#AEB4BC"
    readonly property color quietText: "#7E8690"

    readonly property int secondarySize: 13
    readonly property int controlSize: 15
    readonly property int keySize: 20
    readonly property int chordSize: 44

    readonly property int gap: 12
    readonly property int margin: 24
    readonly property int padding: 16
    readonly property int tileHeight: 96
    readonly property int controlHeight: 38
    readonly property int tileRadius: 12
    readonly property int keyRadius: 9
    readonly property int controlRadius: 8
}
