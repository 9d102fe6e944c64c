import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A button: primary for the one thing to do, quiet for others, plain without a ground.
Button {
    id: button

    enum Kind { Quiet, Primary, Plain }

    property int kind: ActionButton.Quiet
    readonly property bool isPrimary: kind === ActionButton.Primary

    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 2
    rightPadding: Theme.unit * 2
    font.pixelSize: Theme.body
    font.weight: isPrimary ? Font.DemiBold : Font.Normal
    hoverEnabled: true
    opacity: enabled ? 1 : 0.45
    Accessible.name: text
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: button.text
        font: button.font
        color: button.isPrimary ? Theme.textOnAccent : button.kind === ActionButton.Plain ? Theme.accent : Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Theme.radius
        color: {
            if (button.isPrimary)
                return button.down ? Qt.darker(Theme.accent, 1.15) : button.hovered ? Qt.lighter(Theme.accent, 1.08) : Theme.accent;
            if (button.down || button.hovered)
                return Theme.hovered;
            return button.kind === ActionButton.Plain ? "transparent" : Theme.raised;
        }
        border.width: button.kind === ActionButton.Quiet ? 1 : 0
        border.color: Theme.line

        Rectangle {
            anchors.fill: parent
            anchors.margins: -3
            radius: parent.radius + 3
            color: "transparent"
            border.width: Theme.focusWidth
            border.color: Theme.accent
            visible: button.visualFocus
        }
    }
}
