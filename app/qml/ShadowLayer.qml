import QtQuick
import Trellivar

// One of the layers of a shadow.
Rectangle {
    required property int index
    property real cornerRadius
    readonly property real spread: (index - 8) * Theme.unit / 4

    anchors.fill: parent
    anchors.margins: -spread
    radius: Math.max(0, cornerRadius + spread)
    color: Theme.padShadow
}
