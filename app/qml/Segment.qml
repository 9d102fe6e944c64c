import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// One of the choices of a segmented control.
AbstractButton {
    id: segment

    property bool isChosen: false

    implicitHeight: Theme.controlHeight
    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    leftPadding: Theme.unit * 1.5
    rightPadding: Theme.unit * 1.5
    font.pixelSize: Theme.body
    hoverEnabled: true
    focusPolicy: isChosen ? Qt.StrongFocus : Qt.ClickFocus
    Accessible.role: Accessible.RadioButton
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isChosen

    contentItem: Text {
        text: segment.text
        font: segment.font
        color: segment.isChosen ? Theme.text : Theme.quietText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Rectangle {
        radius: Theme.radius - 2
        color: segment.isChosen ? Theme.accentQuiet : segment.hovered ? Theme.hovered : "transparent"
        border.width: segment.isChosen ? 1 : 0
        border.color: Theme.accent

        FocusRing {
            cornerRadius: parent.radius
            visible: segment.visualFocus
        }
    }
}
