import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// How the pad is connected; opened, it explains what that means.
AbstractButton {
    id: chip

    implicitHeight: Math.max(Theme.controlHeight, implicitContentHeight + Theme.unit)
    implicitWidth: Math.ceil(metrics.advanceWidth) + leftPadding + rightPadding
    leftPadding: Theme.unit * 3.5
    rightPadding: Theme.unit * 2
    font.pixelSize: Theme.body
    hoverEnabled: true
    text: App.devices.chipText
    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: App.devices.explanation
    Accessible.onPressAction: clicked()
    onClicked: popover.opened ? popover.close() : popover.open()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: chip.text
        color: Theme.text
        font: chip.font
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: Theme.largeRadius
        color: chip.hovered || chip.down || popover.opened ? Theme.hovered : Theme.raised

        StatusDot {
            x: Theme.unit * 1.5
            anchors.verticalCenter: parent.verticalCenter
            color: Theme.linkColor(App.devices.link)
        }
        FocusRing {
            cornerRadius: parent.radius
            visible: chip.visualFocus
        }
    }

    TextMetrics {
        id: metrics

        text: chip.text
        font: chip.font
    }
    DevicePopover {
        id: popover

        y: chip.height + Theme.unit
    }
}
