import QtQuick
import Trellivar

// The outline of what the keyboard is at.
Rectangle {
    property real cornerRadius: Theme.radius

    anchors.fill: parent
    anchors.margins: -Theme.focusWidth - 1
    radius: cornerRadius + Theme.focusWidth + 1
    color: "transparent"
    border.width: Theme.focusWidth
    border.color: Theme.accent
}
