import QtQuick
import Trellivar

// The pad, drawn as the object that it is. Its proportions are in widths of a keycap.
Item {
    id: pad

    required property real capSize
    readonly property real gap: capSize * 0.16
    readonly property real margin: capSize * 0.22
    readonly property real corner: capSize * 0.2
    readonly property real strip: Math.max(capSize * 0.3, padSwitch.implicitHeight)
    readonly property real thickness: Theme.unit * 1.25

    implicitWidth: keyRow.width + 2 * margin
    implicitHeight: capSize + strip + margin * 2.4 + thickness

    SoftShadow {
        anchors.fill: parent
        anchors.topMargin: Theme.unit * 2
        anchors.bottomMargin: -Theme.unit * 1.5
        cornerRadius: pad.corner
    }
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: pad.thickness
        radius: pad.corner
        color: Theme.padEdge
    }
    Rectangle {
        anchors.fill: parent
        anchors.bottomMargin: pad.thickness
        radius: pad.corner
        border.width: 1
        border.color: Theme.padShine
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.padTop
            }
            GradientStop {
                position: 1
                color: Theme.padBody
            }
        }
    }
    ArrowRow {
        id: keyRow

        x: pad.margin
        y: pad.margin
        spacing: pad.gap

        Repeater {
            model: App.mapping.keys

            KeycapView {
                width: pad.capSize // qmllint disable unqualified
                height: width
            }
        }
    }
    PadSwitch {
        id: padSwitch

        anchors.right: keyRow.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: pad.thickness + pad.margin * 0.8
        mode: App.devices.padMode || App.mapping.activeMode
    }
}
