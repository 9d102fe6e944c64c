import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// An output that is ready to be assigned, marked when the selected key has it.
AbstractButton {
    id: item

    required property int index
    required property string name
    required property bool isAssigned

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 1.25
    rightPadding: leftPadding
    hoverEnabled: true
    text: name
    font.pixelSize: Theme.body
    opacity: enabled ? 1 : 0.45
    Accessible.role: Accessible.RadioButton
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: isAssigned
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: item.text
        font.pixelSize: Theme.body
        font.weight: item.isAssigned ? Font.DemiBold : Font.Normal
        color: item.isAssigned ? Theme.accent : Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
    background: Rectangle {
        radius: height / 2
        color: item.isAssigned ? Theme.accentQuiet : item.hovered || item.down ? Theme.hovered : Theme.raised
        border.width: 1
        border.color: item.isAssigned ? Theme.accent : Theme.line

        FocusRing {
            cornerRadius: parent.radius
            visible: item.visualFocus
        }
    }
}
