import QtQuick
import QtQuick.Templates as T
import Trellivar

// One of the choices of a segmented control.
T.RadioButton {
    id: segment

    property bool isChosen: false

    implicitHeight: Theme.controlHeight - Theme.unit / 2
    implicitWidth: Math.max(Theme.unit * 5, implicitContentWidth + leftPadding + rightPadding)
    leftPadding: Theme.unit * 1.5
    rightPadding: Theme.unit * 1.5
    font.pixelSize: Theme.body
    font.weight: isChosen ? Font.DemiBold : Font.Normal
    hoverEnabled: true
    checkable: false // what is chosen is for the model to say
    // Another one is chosen while this still has the keyboard.
    focusPolicy: isChosen || activeFocus ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onEnterPressed: clicked()

    contentItem: Text {
        text: segment.text
        font: segment.font
        color: segment.isChosen ? Theme.textOnAccent : Theme.text
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: height / 2
        color: segment.isChosen ? Theme.accent : segment.hovered || segment.down ? Theme.hovered : "transparent"

        FocusRing {
            cornerRadius: parent.radius
            visible: segment.visualFocus
        }
    }
}
