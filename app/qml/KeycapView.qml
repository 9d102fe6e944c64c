import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A key of the drawn pad, as deep as one that can be pressed.
AbstractButton {
    id: keycap

    required property int keyId
    required property string legend
    required property string caption
    required property bool isBound
    required property bool isLearned
    required property bool isSelected
    required property bool isDown // on the real pad
    readonly property bool isPressed: down || isDown
    readonly property bool isLit: isSelected || isDown
    readonly property real depth: isPressed ? 1 : Theme.unit / 2
    readonly property real corner: width * 0.12

    hoverEnabled: true
    Accessible.role: Accessible.Button
    Accessible.name: keyId + " " + caption
    Accessible.description: legend
    onClicked: App.mapping.select(keyId)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    HintTip {
        text: keycap.caption
        visible: keycap.isBound && (keycap.hovered || keycap.visualFocus)
    }

    background: Rectangle {
        // The well, and the light that comes out of it.
        radius: keycap.corner
        color: Theme.well

        Rectangle {
            anchors.fill: parent
            anchors.margins: -Theme.unit / 2
            radius: keycap.corner + Theme.unit / 2
            color: Theme.capGlow
            opacity: keycap.isLit ? 1 : 0

            Behavior on opacity {
                NumberAnimation {
                    duration: Theme.motion
                }
            }
        }
        FocusRing {
            cornerRadius: keycap.corner + Theme.unit / 2
            anchors.margins: -Theme.unit
            visible: keycap.visualFocus
        }
    }
    contentItem: Item {
        Rectangle {
            anchors.fill: parent
            anchors.margins: 2
            radius: keycap.corner
            color: keycap.isLit ? Theme.accent : Theme.capEdge
        }
        CapTop {
            anchors.fill: parent
            anchors.margins: 2
            anchors.topMargin: 2 + (keycap.isPressed ? Theme.unit / 2 - 1 : 0)
            anchors.bottomMargin: 2 + keycap.depth
            radius: keycap.corner
            number: keycap.keyId
            legend: keycap.legend || keycap.caption
            isQuiet: !keycap.isBound
            isLit: keycap.isLit
            isHovered: keycap.hovered
        }
    }
}
