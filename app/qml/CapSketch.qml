import QtQuick
import Trellivar

// A key of the pad as a drawing: sunk while it is down, ringed while it is asked for, with a tick when it
// is known.
Item {
    id: cap

    property string legend
    property bool isDown: false
    property bool isMarked: false
    property bool isTicked: false
    readonly property int travel: Theme.unit / 2

    implicitWidth: Theme.unit * 9
    implicitHeight: Theme.unit * 9

    Rectangle {
        y: cap.travel
        width: parent.width
        height: parent.height - cap.travel
        radius: Theme.radius
        color: Theme.capEdge
    }
    Rectangle {
        width: parent.width
        height: parent.height - cap.travel
        y: cap.isDown ? cap.travel : 0
        radius: Theme.radius
        color: cap.isMarked || cap.isDown ? Theme.accentQuiet : Theme.cap
        border.width: cap.isMarked || cap.isDown ? 2 : 1
        border.color: cap.isMarked || cap.isDown ? Theme.accent : Theme.capEdge

        Behavior on y {
            NumberAnimation {
                duration: Theme.motion / 2
            }
        }

        Text {
            anchors.centerIn: parent
            text: cap.legend
            color: Theme.text
            font.pixelSize: Theme.large
            font.weight: Font.Medium
            Accessible.ignored: true
        }
        Text {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.margins: Theme.unit
            visible: cap.isTicked
            text: "✓"
            color: Theme.success
            font.pixelSize: Theme.body
            font.weight: Font.Bold
            Accessible.ignored: true
        }
    }
}
