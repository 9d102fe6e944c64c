import QtQuick
import Trellivar

// The switch of the pad as a drawing, in one of its three positions.
Column {
    id: control

    property string mode
    property bool isMarked: false
    readonly property var modes: ["P", "M", "R"]
    readonly property int notch: Theme.unit * 3

    spacing: Theme.unit / 2

    Row {
        Repeater {
            model: control.modes

            Text {
                required property string modelData

                width: control.notch
                text: modelData
                horizontalAlignment: Text.AlignHCenter
                color: control.mode !== modelData ? Theme.quietText : control.isMarked ? Theme.accent : Theme.text
                font.pixelSize: Theme.small
                font.weight: control.mode === modelData ? Font.Bold : Font.Normal
                Accessible.ignored: true
            }
        }
    }
    Rectangle {
        width: control.notch * control.modes.length
        height: Theme.unit * 2
        radius: height / 2
        color: Theme.padEdge
        border.width: control.isMarked ? 2 : 0
        border.color: Theme.accent

        Rectangle {
            visible: control.mode.length > 0
            x: control.notch * control.modes.indexOf(control.mode) + 3
            y: 3
            width: control.notch - 6
            height: parent.height - 6
            radius: height / 2
            color: control.isMarked ? Theme.accent : Theme.cap

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                    easing.type: Easing.OutCubic
                }
            }
        }
    }
}
