import QtQuick
import Trellivar

// The blurred shadow of a rounded object, as layers that grow and add up.
Item {
    id: shadow

    property real cornerRadius: Theme.radius
    property int layers: 12

    Repeater {
        model: shadow.layers

        Rectangle {
            required property int index
            readonly property real spread: (index - 4) * Theme.unit / 3

            anchors.fill: parent
            anchors.margins: -spread
            radius: Math.max(0, shadow.cornerRadius + spread) // qmllint disable unqualified
            color: Theme.padShadow
        }
    }
}
