import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A short explanation of what the pointer or the keyboard is at.
ToolTip {
    id: tip

    width: Math.min(Math.ceil(metrics.advanceWidth) + leftPadding + rightPadding, Theme.popoverWidth)
    delay: 500
    padding: Theme.unit
    font.pixelSize: Theme.small

    contentItem: Text {
        text: tip.text
        font: tip.font
        color: Theme.text
        wrapMode: Text.Wrap
    }
    TextMetrics {
        id: metrics

        text: tip.text
        font: tip.font
    }
    background: Rectangle {
        radius: Theme.radius / 2
        color: Theme.raised
        border.width: 1
        border.color: Theme.line
    }
}
