import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// How the pad is connected; opened, it explains what that means.
AbstractButton {
    id: chip

    readonly property var lights: ({
            "usb": Theme.success,
            "wireless": Theme.accent,
            "none": Theme.quietText
        })

    implicitHeight: Theme.controlHeight
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    leftPadding: Theme.unit * 1.5
    rightPadding: Theme.unit * 2
    hoverEnabled: true
    text: App.devices.chipText
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: text
    Accessible.description: App.devices.explanation
    onClicked: popover.opened ? popover.close() : popover.open()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: RowLayout {
        spacing: Theme.unit

        StatusDot {
            color: chip.lights[App.devices.link] ?? Theme.quietText
        }
        Text {
            text: chip.text
            color: Theme.text
            font.pixelSize: Theme.body
        }
    }
    background: Rectangle {
        radius: height / 2
        color: chip.hovered || chip.down || popover.opened ? Theme.hovered : Theme.raised
        border.width: 1
        border.color: Theme.line

        FocusRing {
            cornerRadius: parent.radius
            visible: chip.visualFocus
        }
    }

    DevicePopover {
        id: popover

        y: chip.height + Theme.unit
    }
}
