import QtQuick
import QtQuick.Shapes
import Trellivar

// The drawing of an output that has one, by the name of its key.
Item {
    id: glyph

    property string name
    property color color: Theme.text

    readonly property string speaker: "M2.5 9.5 H6.5 L11.5 5 V19 L6.5 14.5 H2.5 Z"
    readonly property string mouse: "M12 2.5 A6.5 6.5 0 0 1 18.5 9 V15 A6.5 6.5 0 0 1 5.5 15 V9 "
        + "A6.5 6.5 0 0 1 12 2.5 Z M5.5 11 H18.5"
    // On a ground of 24 by 24: what is filled, and what is a line.
    readonly property var drawings: ({
            "volume_increment": [speaker, "M15 9 A4.2 4.2 0 0 1 15 15 M17.8 6.2 A8.2 8.2 0 0 1 17.8 17.8"],
            "volume_decrement": [speaker, "M15 9 A4.2 4.2 0 0 1 15 15"],
            "mute": [speaker, "M15.5 9.5 L20.5 14.5 M20.5 9.5 L15.5 14.5"],
            "play_or_pause": ["M3 5.5 L12.5 12 L3 18.5 Z", "M16 6 V18 M20.5 6 V18"],
            "button1": ["M12 2.5 A6.5 6.5 0 0 0 5.5 9 V11 H12 Z", mouse],
            "button2": ["M12 2.5 A6.5 6.5 0 0 1 18.5 9 V11 H12 Z", mouse],
            "button3": ["M10.2 5 H13.8 V11 H10.2 Z", mouse]
        })
    readonly property var drawing: drawings[name] ?? ["", ""]

    implicitWidth: Theme.glyphSize
    implicitHeight: Theme.glyphSize
    visible: name.length > 0
    Accessible.ignored: true

    Shape {
        anchors.centerIn: parent
        width: 24
        height: 24
        scale: glyph.width / 24

        ShapePath {
            fillColor: glyph.color
            strokeColor: "transparent"

            PathSvg {
                path: glyph.drawing[0]
            }
        }
        ShapePath {
            fillColor: "transparent"
            strokeColor: glyph.color
            strokeWidth: 1.8
            capStyle: ShapePath.RoundCap
            joinStyle: ShapePath.RoundJoin

            PathSvg {
                path: glyph.drawing[1]
            }
        }
    }
}
