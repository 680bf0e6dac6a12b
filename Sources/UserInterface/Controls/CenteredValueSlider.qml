import QtQuick
import Tavro

// A slider whose rest is in the middle: filled from there to the knob.
CleanValueSlider {
    id: root

    fillOrigin: 0.5

    // The rest position, so that it can be found again by eye.
    Rectangle {
        z: -1
        anchors.centerIn: parent
        width: 2
        height: 10
        radius: 1
        color: Theme.strongHairline
    }
}
