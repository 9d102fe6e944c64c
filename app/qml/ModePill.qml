import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// One mode of the pad, to be chosen.
AbstractButton {
    id: pill

    required property string name
    required property bool isActive

    implicitWidth: Theme.unit * 6
    implicitHeight: Theme.controlHeight
    hoverEnabled: true
    text: name
    Accessible.role: Accessible.RadioButton
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: isActive
    onClicked: App.mapping.setMode(name)
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: pill.text
        color: pill.isActive ? Theme.textOnAccent : Theme.text
        font.pixelSize: Theme.body
        font.weight: pill.isActive ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: height / 2
        color: pill.isActive ? Theme.accent : pill.hovered || pill.down ? Theme.hovered : "transparent"

        FocusRing {
            cornerRadius: parent.radius
            visible: pill.visualFocus
        }
    }
}
