import QtQuick
import Trellivar

// The drawing of the pad, with the keys that are put into it. Its proportions are in widths of a keycap.
Item {
    id: pad

    property real capSize: Theme.capDrawn
    property string mode
    property bool isSwitchMarked: false
    // How it is connected, for its light.
    property string link: "none"
    default property alias keys: row.data

    readonly property real gap: capSize * 0.09
    readonly property real margin: capSize * 0.16
    readonly property real corner: capSize * 0.24
    readonly property real thickness: Math.round(capSize * 0.07)
    readonly property real keysWidth: 3 * capSize + 2 * gap

    implicitWidth: bed.width + 2 * margin
    implicitHeight: bed.height + 2 * margin + padSwitch.height + Theme.unit * 1.5 + thickness

    SoftShadow {
        anchors.fill: parent
        anchors.topMargin: Theme.unit * 2
        anchors.bottomMargin: -pad.capSize * 0.08
        cornerRadius: pad.corner
    }
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: pad.thickness * 2
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
    Rectangle {
        id: bed

        x: pad.margin
        y: pad.margin
        width: pad.keysWidth + 2 * pad.gap
        height: pad.capSize + 2 * pad.gap
        radius: pad.corner * 0.75
        color: Theme.bed
        border.width: 1
        border.color: Theme.bedEdge

        ArrowKeys {
            x: pad.gap
            y: pad.gap

            Row {
                id: row

                height: pad.capSize
                spacing: pad.gap
            }
        }
    }
    StatusDot {
        x: pad.margin * 1.6
        anchors.verticalCenter: padSwitch.verticalCenter
        opacity: pad.link === "none" ? 0.5 : 1
        color: Theme.linkColor(pad.link)
    }
    PadSwitch {
        id: padSwitch

        anchors.right: bed.right
        anchors.rightMargin: pad.gap
        y: bed.y + bed.height + (pad.height - pad.thickness - bed.y - bed.height - height) / 2
        mode: pad.mode
        isMarked: pad.isSwitchMarked
    }
}
