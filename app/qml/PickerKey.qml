import QtQuick
import Trellivar

// A key of the keyboard on which a shortcut is composed.
KeyboardKey {
    id: key

    required property var modelData
    required property int index
    required property real unitWidth
    required property real gap
    // The key that Tab comes to.
    required property string current
    readonly property string keyId: modelData.keyId

    signal entered(string keyId)
    signal moved(Item key, int across, int down)

    width: modelData.width * unitWidth - gap
    label: modelData.label
    name: modelData.name
    isSpacer: modelData.isSpacer
    isChosen: App.picker.chosen.indexOf(keyId) >= 0
    focusPolicy: current === keyId ? Qt.StrongFocus : Qt.ClickFocus
    onActiveFocusChanged: if (activeFocus)
        entered(keyId)
    onClicked: App.picker.toggle(keyId)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()
    Keys.onLeftPressed: moved(key, -1, 0)
    Keys.onRightPressed: moved(key, 1, 0)
    Keys.onUpPressed: moved(key, 0, -1)
    Keys.onDownPressed: moved(key, 0, 1)
}
