import QtQuick
import Trellivar

// The pad with a caption above each key, and its cable.
Item {
    id: stage

    // As large as the room allows; the room is in widths of a keycap.
    readonly property real capSize: Math.floor(Math.min((width - Theme.unit * 10) / 3.9, (height - captions.height - leader - Theme.unit * 10) / 1.6, Theme.capLargest))
    readonly property real leader: Theme.unit * 3

    PadCable {
        anchors.left: parent.left
        anchors.right: pad.left
        y: pad.y + pad.height * 0.72 - height / 2
        isPlugged: App.devices.link === "usb"
    }
    CaptionRow {
        id: captions

        anchors.horizontalCenter: pad.horizontalCenter
        y: pad.y - stage.leader - height
        z: 1
        width: pad.keysWidth + pad.gap
        leader: stage.leader + pad.margin + pad.gap
    }
    DeviceBodyView {
        id: pad

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.round((stage.height - height + captions.height + stage.leader) / 2)
        capSize: stage.capSize
    }
}
