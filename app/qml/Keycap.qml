import QtQuick
import Trellivar

// The drawing of a key of the pad: a cap with sloping sides, which sinks while it is down.
Item {
    id: cap

    property int number
    // What it does; without it, the number stands in its place. A cap without either is blank.
    property string legend
    property string glyph
    property bool isQuiet: false
    property bool isHovered: false
    property bool isSunk: false
    property bool isLit: false
    property bool isSelected: false
    property bool isTicked: false

    readonly property real corner: width * 0.13
    readonly property real slope: width * 0.065
    readonly property real travel: Math.max(2, Math.round(width * 0.03))
    readonly property color ink: isLit || !isQuiet ? Theme.capText : Theme.capQuietText

    Rectangle {
        // The light of the key that is selected or pressed.
        anchors.fill: parent
        anchors.margins: -Theme.unit / 2
        radius: cap.corner + Theme.unit / 2
        color: Theme.glow
        opacity: cap.isSelected || cap.isLit ? 1 : 0

        Behavior on opacity {
            NumberAnimation {
                duration: Theme.motion
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        anchors.topMargin: face.sinking
        radius: cap.corner
        border.width: cap.isSelected ? 2 : 1
        border.color: cap.isSelected || cap.isLit ? Theme.accent : Theme.capFoot
        gradient: Gradient {
            GradientStop {
                position: 0
                color: Theme.capSide
            }
            GradientStop {
                position: 1
                color: Theme.capFoot
            }
        }
    }
    Rectangle {
        id: face

        property real sinking: cap.isSunk ? cap.travel : 0

        x: cap.slope
        y: cap.slope * 0.7 + sinking
        width: parent.width - 2 * cap.slope
        height: parent.height - cap.slope * 2.3 - sinking / 2
        radius: cap.corner * 0.85
        border.width: 1
        border.color: cap.isLit ? Theme.accent : Theme.capRim
        gradient: Gradient {
            GradientStop {
                position: 0
                color: cap.isLit ? Theme.capLitHigh : cap.isHovered ? Theme.capHover : Theme.capHigh
            }
            GradientStop {
                position: 1
                color: cap.isLit ? Theme.capLitLow : cap.isHovered ? Theme.capHigh : Theme.capLow
            }
        }

        Behavior on sinking {
            NumberAnimation {
                duration: Theme.motion / 2
                easing.type: Easing.OutCubic
            }
        }

        Text {
            x: Theme.unit
            y: Theme.unit * 0.75
            visible: cap.legend.length > 0 && cap.number > 0
            text: cap.number
            color: cap.isLit ? Theme.capText : Theme.capQuietText
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
            Accessible.ignored: true
        }
        Text {
            anchors.right: parent.right
            anchors.rightMargin: Theme.unit
            y: Theme.unit * 0.75
            visible: cap.isTicked
            text: "✓"
            color: Theme.capText
            font.pixelSize: Theme.small
            font.weight: Font.Bold
            Accessible.ignored: true
        }
        Glyph {
            anchors.centerIn: parent
            width: Theme.glyphSize * 2
            height: width
            name: cap.glyph
            color: cap.ink
        }
        Text {
            id: legendText

            readonly property bool isTight: metrics.advanceWidth > width

            anchors.fill: parent
            anchors.margins: Theme.unit
            anchors.topMargin: cap.legend.length > 0 ? Theme.unit * 2.5 : Theme.unit
            anchors.bottomMargin: anchors.topMargin
            visible: cap.glyph.length === 0
            text: cap.legend || (cap.number > 0 ? cap.number : "")
            color: cap.ink
            font.pixelSize: isTight || cap.isQuiet ? Theme.body : Theme.large
            font.weight: cap.isQuiet ? Font.Normal : Font.Medium
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            Accessible.ignored: true

            TextMetrics {
                id: metrics

                text: legendText.text
                font.family: legendText.font.family
                font.pixelSize: Theme.large
            }
        }
    }
}
