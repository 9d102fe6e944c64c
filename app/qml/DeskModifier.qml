import QtQuick
import Trellivar

// A modifier of the ordinary keyboard: down, until it is clicked again.
KeyboardKey {
    id: key

    required property string keyName

    implicitHeight: Theme.controlHeight
    name: keyName.replace(/_/g, " ")
    onClicked: {
        isChosen = !isChosen;
        isChosen ? Desk.keyDown(keyName) : Desk.keyUp(keyName);
    }
}
