import QtQuick
import Trellivar

// The upper side of a keycap: its number and its legend.
Rectangle {
    id: top

    required property int number
    required property string legend
    required property bool isQuiet
    required property bool isLit
    required property bool isHovered
    readonly property real inset: width * 0.07

    border.width: isLit ? 2 : 1
    border.color: isLit ? Theme.accent : Theme.capTop
    gradient: Gradient {
        GradientStop {
            position: 0
            color: top.isLit ? Theme.accentQuiet : top.isHovered ? Theme.capTop : Theme.cap
        }
        GradientStop {
            position: 1
            color: top.isLit ? Theme.accentQuiet : Theme.capTop
        }
    }

    Behavior on anchors.topMargin {
        NumberAnimation {
            duration: Theme.motion
            easing.type: Easing.OutCubic
        }
    }

    Text {
        id: numberText

        x: top.inset * 1.3
        y: top.inset
        text: top.number
        color: top.isLit ? Theme.accent : Theme.quietText
        font.pixelSize: Math.max(Theme.small, top.width * 0.075)
        font.weight: Font.DemiBold
    }
    Text {
        anchors.fill: parent
        anchors.leftMargin: top.inset
        anchors.rightMargin: top.inset
        anchors.topMargin: numberText.y + numberText.height
        anchors.bottomMargin: numberText.y + numberText.height
        text: top.legend
        color: top.isQuiet ? Theme.quietText : Theme.text
        font.pixelSize: Math.max(Theme.body, top.width * (top.isQuiet ? 0.12 : 0.165))
        font.weight: top.isQuiet ? Font.Normal : Font.Medium
        fontSizeMode: Text.Fit
        minimumPixelSize: Theme.small
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        elide: Text.ElideRight
    }
}
