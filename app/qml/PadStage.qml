import QtQuick
import QtQuick.Layouts
import Trellivar

// The pad with a caption above each key.
Item {
    id: stage

    // As large as the room allows; the room is in widths of a keycap.
    readonly property real capSize: Math.min((width - Theme.unit * 10) / 3.8, (height - Theme.unit * 12) / 2, Theme.capLargest)
    readonly property real leader: Theme.unit * 3

    PadCable {
        anchors.left: parent.left
        anchors.right: pad.left
        y: pad.y + pad.height - pad.margin * 2
        isPlugged: App.devices.link === "usb"
    }
    ArrowRow {
        id: captions

        anchors.horizontalCenter: pad.horizontalCenter
        anchors.bottom: pad.top
        anchors.bottomMargin: stage.leader
        z: 1
        spacing: Theme.unit

        Repeater {
            model: App.mapping.keys

            ActionPill {
                // qmllint disable unqualified
                anchors.bottom: captions.bottom
                width: stage.capSize + pad.gap - captions.spacing
                leader: stage.leader + pad.margin
                // qmllint enable unqualified
            }
        }
    }
    DeviceBodyView {
        id: pad

        anchors.horizontalCenter: parent.horizontalCenter
        y: (stage.height - height + Theme.unit * 7) / 2
        capSize: stage.capSize
    }
}
