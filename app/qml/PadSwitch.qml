import QtQuick
import Trellivar

// The switch of the drawn pad, at the position of its mode.
Item {
    id: padSwitch

    required property string mode
    readonly property string positions: "PMR"
    readonly property int position: Math.max(0, positions.indexOf(mode))
    readonly property real step: Theme.unit * 3

    implicitWidth: step * positions.length
    implicitHeight: slot.height + Theme.unit * 2.5
    Accessible.role: Accessible.StaticText
    Accessible.name: mode

    Rectangle {
        id: slot

        width: parent.width
        height: Theme.unit * 1.5
        radius: height / 2
        color: Theme.well

        Rectangle {
            x: padSwitch.position * padSwitch.step + 2
            y: 2
            width: padSwitch.step - 4
            height: parent.height - 4
            radius: height / 2
            color: Theme.accent

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                    easing.type: Easing.OutCubic
                }
            }
        }
    }
    Row {
        anchors.bottom: parent.bottom

        Repeater {
            model: padSwitch.positions.length

            Text {
                required property int index
                // qmllint disable unqualified
                readonly property bool isHere: index === padSwitch.position

                width: padSwitch.step
                text: padSwitch.positions[index]
                // qmllint enable unqualified
                color: isHere ? Theme.text : Theme.quietText
                font.pixelSize: Theme.small
                font.weight: isHere ? Font.DemiBold : Font.Normal
                horizontalAlignment: Text.AlignHCenter
            }
        }
    }
}
