import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A key of the pad that is down as long as the mouse or Space is.
AbstractButton {
    id: key

    required property int keyId
    required property bool isDown

    height: parent ? parent.height : 0
    width: height
    Accessible.role: Accessible.Button
    Accessible.name: "Pad key " + keyId
    onPressed: Desk.press(keyId)
    onReleased: Desk.release(keyId)
    onCanceled: Desk.release(keyId)

    contentItem: Keycap {
        number: key.keyId
        isSunk: key.isDown
        isLit: key.isDown
    }
    background: Item {
        FocusRing {
            cornerRadius: key.width * 0.13
            visible: key.visualFocus
        }
    }
}
