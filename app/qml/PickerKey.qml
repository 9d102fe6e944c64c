import QtQuick
import Trellivar

// A key of the keyboard on which a shortcut is composed.
KeyboardKey {
    required property int index
    required property string keyId
    required property real units

    // Of a plain key, with the gap beside it.
    property real unitWidth
    property real gap
    // The key that Tab comes to.
    property string current

    width: units * unitWidth - gap
    focusPolicy: current === keyId ? Qt.StrongFocus : Qt.ClickFocus
    onClicked: App.picker.choose(keyId)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
}
