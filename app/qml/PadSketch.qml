import QtQuick
import Trellivar

// The pad as a drawing: a body with the keys that are put into it and the switch below them.
Item {
    id: pad

    property alias mode: position.mode
    property alias isSwitchMarked: position.isMarked
    default property alias keys: row.data
    readonly property int rim: Theme.unit / 2

    implicitWidth: content.width + Theme.unit * 4
    implicitHeight: content.height + Theme.unit * 4 + rim

    Rectangle {
        anchors.fill: parent
        radius: Theme.radius * 2
        color: Theme.padEdge
    }
    Rectangle {
        width: parent.width
        height: parent.height - pad.rim
        radius: Theme.radius * 2
        border.width: 1
        border.color: Theme.padEdge
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
    Column {
        id: content

        x: Theme.unit * 2
        y: Theme.unit * 2
        spacing: Theme.unit * 1.5

        Row {
            id: row

            spacing: Theme.unit * 1.5
        }
        SwitchSketch {
            id: position

            anchors.right: parent.right
        }
    }
}
