import QtQuick
import Trellivar

// The cable that comes in from the left and ends in the pad's socket.
Item {
    id: cable

    required property bool isPlugged
    readonly property real thickness: Theme.unit * 0.75

    implicitHeight: Theme.unit * 3
    opacity: isPlugged ? 1 : 0

    Behavior on opacity {
        NumberAnimation {
            duration: Theme.motion
        }
    }

    Item {
        x: cable.isPlugged ? 0 : -Theme.unit * 3
        width: parent.width
        height: parent.height

        Behavior on x {
            NumberAnimation {
                duration: Theme.motion
                easing.type: Easing.OutCubic
            }
        }

        Rectangle {
            anchors.left: parent.left
            anchors.right: grip.left
            anchors.verticalCenter: parent.verticalCenter
            height: cable.thickness
            gradient: Gradient {
                GradientStop {
                    position: 0
                    color: Theme.plug
                }
                GradientStop {
                    position: 1
                    color: Theme.cable
                }
            }
        }
        Rectangle {
            id: grip

            anchors.right: metal.left
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.unit * 3.5
            height: Theme.unit * 2.25
            radius: Theme.unit / 2
            color: Theme.cable
        }
        Rectangle {
            id: metal

            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            width: Theme.unit
            height: Theme.unit * 1.5
            color: Theme.plug
        }
    }
}
