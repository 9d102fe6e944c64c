import QtQuick
import QtQuick.Shapes
import Trellivar

// The time that is left of a period of listening, as a ring that empties and begins anew.
Item {
    id: ring

    required property int period
    property real remaining

    implicitWidth: Theme.ringSize
    implicitHeight: Theme.ringSize

    NumberAnimation on remaining {
        running: ring.visible && ring.period > 0
        loops: Animation.Infinite
        from: 1
        to: 0
        duration: ring.period
    }

    Shape {
        anchors.fill: parent
        layer.enabled: true
        layer.samples: 4

        ShapePath {
            fillColor: "transparent"
            strokeColor: Theme.line
            strokeWidth: 3

            PathAngleArc {
                centerX: ring.width / 2
                centerY: ring.height / 2
                radiusX: ring.width / 2 - 2
                radiusY: radiusX
                sweepAngle: 360
            }
        }
        ShapePath {
            fillColor: "transparent"
            strokeColor: Theme.accent
            strokeWidth: 3
            capStyle: ShapePath.RoundCap

            PathAngleArc {
                centerX: ring.width / 2
                centerY: ring.height / 2
                radiusX: ring.width / 2 - 2
                radiusY: radiusX
                startAngle: -90
                sweepAngle: 360 * ring.remaining
            }
        }
    }
    Rectangle {
        anchors.centerIn: parent
        width: Theme.unit * 1.5
        height: width
        radius: width / 2
        color: Theme.accent
    }
}
