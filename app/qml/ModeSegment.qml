import QtQuick
import Trellivar

// One mode of the pad, to be chosen.
Segment {
    required property string name
    required property bool isActive

    text: name
    isChosen: isActive
    onClicked: App.mapping.setMode(name)
}
