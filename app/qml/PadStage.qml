import QtQuick
import Trellivar

// The pad with a caption above each key, and its cable.
Item {
    id: stage

    // As large as the room allows. The pad is some 3.9 keycaps wide and 1.6 high, and its switch.
    readonly property real widest: (width - Theme.unit * 10) / 3.9
    readonly property real highest: (height - captions.height - leader - Theme.unit * 10) / 1.6
    readonly property real capSize: Math.floor(Math.min(widest, highest, Theme.capLargest))
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
