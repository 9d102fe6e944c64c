import QtQuick
import Trellivar

// Goes on for as long as something is under way.
Rectangle {
    id: line

    implicitHeight: Theme.unit / 2
    radius: height / 2
    color: Theme.line
    clip: true

    Rectangle {
        width: App.isMotionReduced ? parent.width : parent.width * 0.4
        height: parent.height
        radius: parent.radius
        color: Theme.accent

        NumberAnimation on x {
            running: line.visible && !App.isMotionReduced
            loops: Animation.Infinite
            from: -line.width * 0.4
            to: line.width
            duration: Theme.motion * 8
        }
    }
}
