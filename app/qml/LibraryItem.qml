import QtQuick
import QtQuick.Templates as T
import Trellivar

// An output that is ready to be assigned, marked when the selected key has it.
T.RadioButton {
    id: item

    required property int index
    required property string name
    required property string glyph
    required property bool isAssigned

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlHeight
    leftPadding: Theme.unit * 1.5 + Theme.glyphSize
    rightPadding: Theme.unit * 1.25
    hoverEnabled: true
    checkable: false // what is chosen is for the model to say
    text: name
    font.pixelSize: Theme.body
    Accessible.name: name
    Accessible.checkable: true
    Accessible.checked: isAssigned
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        leftPadding: Theme.unit * 0.75
        text: item.text
        font.pixelSize: Theme.body
        font.weight: item.isAssigned ? Font.DemiBold : Font.Normal
        color: item.isAssigned ? Theme.accent : Theme.text
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: height / 2
        color: item.isAssigned ? Theme.accentQuiet : item.hovered || item.down ? Theme.hovered : Theme.raised
        border.width: item.isAssigned || !Theme.isDark ? 1 : 0
        border.color: item.isAssigned ? Theme.accent : Theme.line

        Glyph {
            x: Theme.unit * 1.25
            anchors.verticalCenter: parent.verticalCenter
            name: item.glyph
            color: item.isAssigned ? Theme.accent : Theme.text
        }
        FocusRing {
            cornerRadius: parent.radius
            visible: item.visualFocus
        }
    }
}
