import QtQuick
import QtQuick.Shapes
import Trellivar

// The time that is left of a period of listening, as a ring that empties and begins anew. Where people
// asked for no motion, it stays full.
Item {
    id: ring

    required property int period
    property real remaining: 1
    readonly property real radius: width / 2 - stroke
    readonly property real stroke: width / 24

    implicitWidth: Theme.ringSize
    implicitHeight: Theme.ringSize
    Accessible.ignored: true

    NumberAnimation {
        target: ring
        property: "remaining"
        running: ring.visible && ring.period > 0 && !App.isMotionReduced
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
            strokeWidth: ring.stroke

            PathAngleArc {
                centerX: ring.width / 2
                centerY: ring.height / 2
                radiusX: ring.radius
                radiusY: ring.radius
                sweepAngle: 360
            }
        }
        ShapePath {
            fillColor: "transparent"
            strokeColor: Theme.accent
            strokeWidth: ring.stroke
            capStyle: ShapePath.RoundCap

            PathAngleArc {
                centerX: ring.width / 2
                centerY: ring.height / 2
                radiusX: ring.radius
                radiusY: ring.radius
                startAngle: -90
                sweepAngle: 360 * ring.remaining
            }
        }
    }
    StatusDot {
        anchors.centerIn: parent
        width: ring.width * 0.16
        height: width
        color: Theme.accent
    }
}
