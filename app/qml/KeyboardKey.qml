import QtQuick
import QtQuick.Templates as T
import Trellivar

// A key of a drawn keyboard. A spacer keeps the place of one. It is told as a check box, which T.CheckBox is
// not without checking itself.
T.CheckDelegate {
    id: key

    property string label
    property string name
    property bool isSpacer: false
    property bool isChosen: false

    implicitHeight: Theme.unit * 5
    enabled: !isSpacer
    focusPolicy: Qt.StrongFocus
    hoverEnabled: true
    checkable: false // what is chosen is for the model to say
    font.pixelSize: Theme.body
    Accessible.name: name
    Accessible.ignored: isSpacer
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    contentItem: Text {
        text: key.label
        font: key.font
        color: key.isChosen ? Theme.textOnAccent : Theme.capText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        visible: !key.isSpacer
        radius: Theme.radius * 0.75
        color: key.isChosen ? Theme.accent : Theme.capFoot

        Rectangle {
            width: parent.width
            height: parent.height - 2
            y: key.down ? 2 : 0
            radius: parent.radius
            color: key.isChosen ? Theme.accent : key.hovered ? Theme.capHigh : Theme.capLow
            border.width: 1
            border.color: key.isChosen ? Theme.accent : Theme.capSide
        }
        FocusRing {
            cornerRadius: parent.radius
            visible: key.visualFocus
        }
    }
}
