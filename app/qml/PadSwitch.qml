import QtQuick
import Trellivar

// The switch of the pad, at the position of its mode; marked while it is to be moved.
Item {
    id: control

    property string mode
    property bool isMarked: false
    readonly property string modes: "PMR"
    readonly property int position: mode.length > 0 ? modes.indexOf(mode) : -1
    readonly property int step: Theme.unit * 3

    implicitWidth: step * modes.length
    implicitHeight: slot.y + slot.height
    Accessible.role: Accessible.StaticText
    Accessible.name: mode

    Row {
        id: letters

        SwitchLetter {
            text: "P"
            isHere: control.mode === text
            isMarked: control.isMarked
        }
        SwitchLetter {
            text: "M"
            isHere: control.mode === text
            isMarked: control.isMarked
        }
        SwitchLetter {
            text: "R"
            isHere: control.mode === text
            isMarked: control.isMarked
        }
    }
    Rectangle {
        id: slot

        y: letters.height + Theme.unit / 4
        width: parent.width
        height: Theme.unit * 2
        radius: height / 2
        color: Theme.bed
        border.width: control.isMarked ? 2 : 1
        border.color: control.isMarked ? Theme.accent : Theme.bedEdge

        Rectangle {
            visible: control.position >= 0
            x: control.position * control.step + 3
            y: 3
            width: control.step - 6
            height: parent.height - 6
            radius: height / 2
            border.width: 1
            border.color: control.isMarked ? Theme.accent : Theme.capRim
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: control.isMarked ? Theme.accent : Theme.capHigh
                }
                GradientStop {
                    position: 1
                    color: control.isMarked ? Theme.accent : Theme.capLow
                }
            }

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                    easing.type: Easing.OutCubic
                }
            }
        }
    }
}
