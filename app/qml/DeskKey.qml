import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A key of the pad that is down as long as the mouse or Space is.
AbstractButton {
    id: key

    required property int keyId

    Accessible.role: Accessible.Button
    Accessible.name: "Pad key " + keyId
    onPressed: Desk.press(keyId)
    onReleased: Desk.release(keyId)
    onCanceled: Desk.release(keyId)

    contentItem: CapSketch {
        legend: key.keyId
        isDown: Desk.pressed.includes(key.keyId)

        FocusRing {
            visible: key.visualFocus
        }
    }
}
