import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Shapes
import Trellivar

// The gear that opens the settings.
AbstractButton {
    id: button

    readonly property real size: Theme.unit * 2.5
    readonly property int teeth: 8

    // The outline of the gear: each tooth is four corners, two outside and two inside.
    function outline(): var {
        const corners = [];
        const middle = size / 2;
        const offsets = [[-0.34, 0.74], [-0.2, 1], [0.2, 1], [0.34, 0.74]];
        for (let tooth = 0; tooth <= teeth; ++tooth) {
            for (const [turn, reach] of tooth < teeth ? offsets : offsets.slice(0, 1)) {
                const angle = (tooth + turn) * 2 * Math.PI / teeth;
                const distance = reach * (middle - 1);
                corners.push(Qt.point(middle + distance * Math.sin(angle), middle - distance * Math.cos(angle)));
            }
        }
        return corners;
    }

    implicitWidth: Theme.controlHeight
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    text: App.texts.settingsLabel
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.onPressAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    HintTip {
        text: button.text
        visible: button.hovered || button.visualFocus
    }
    contentItem: Item {
        Shape {
            anchors.centerIn: parent
            width: button.size
            height: button.size

            ShapePath {
                fillColor: "transparent"
                strokeColor: Theme.text
                strokeWidth: 1.5
                joinStyle: ShapePath.RoundJoin

                PathPolyline {
                    path: button.outline()
                }
                PathAngleArc {
                    centerX: button.size / 2
                    centerY: button.size / 2
                    radiusX: button.size * 0.14
                    radiusY: radiusX
                    sweepAngle: 360
                }
            }
        }
    }
    background: Rectangle {
        radius: height / 2
        color: button.hovered || button.down ? Theme.hovered : "transparent"

        FocusRing {
            cornerRadius: parent.radius
            visible: button.visualFocus
        }
    }
}
