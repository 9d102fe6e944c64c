import QtQuick
import Trellivar

// The number of a step, or a tick.
Rectangle {
    id: mark

    required property int number
    required property bool isDone
    required property bool isActive

    implicitWidth: Theme.unit * 3
    implicitHeight: implicitWidth
    radius: width / 2
    color: isActive ? Theme.accent : "transparent"
    border.width: isActive ? 0 : 1
    border.color: isDone ? Theme.success : Theme.quietText

    Text {
        anchors.centerIn: parent
        text: mark.isDone ? "✓" : mark.number
        color: mark.isActive ? Theme.textOnAccent : mark.isDone ? Theme.success : Theme.quietText
        font.pixelSize: Theme.small
        font.weight: Font.Bold
        Accessible.ignored: true
    }
}
