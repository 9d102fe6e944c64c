import QtQuick
import Trellivar

// The letter of a mode beside the switch.
Text {
    property bool isHere: false
    property bool isMarked: false

    width: Theme.unit * 3
    color: isHere && isMarked && Theme.isDark ? Theme.accent : Theme.padText
    opacity: isHere ? 1 : 0.85
    font.pixelSize: Theme.small
    font.weight: isHere ? Font.Bold : Font.Normal
    horizontalAlignment: Text.AlignHCenter
    Accessible.ignored: true
}
