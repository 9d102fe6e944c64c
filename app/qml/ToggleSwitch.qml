import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// On or off, at once.
Switch {
    id: control

    function flip() {
        control.toggle();
        control.toggled();
    }

    implicitHeight: Theme.controlHeight
    padding: 0
    spacing: Theme.unit
    font.pixelSize: Theme.body
    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.onPressAction: flip()
    Accessible.onToggleAction: flip()
    Keys.onReturnPressed: flip()
    Keys.onEnterPressed: flip()

    indicator: Rectangle {
        x: control.text.length > 0 ? control.width - width : 0
        y: (control.height - height) / 2
        implicitWidth: Theme.unit * 5
        implicitHeight: Theme.unit * 3
        radius: height / 2
        color: control.checked ? Theme.accent : Theme.window
        border.width: 1
        border.color: control.checked ? Theme.accent : Theme.quietText

        Rectangle {
            x: control.checked ? parent.width - width - 4 : 4
            y: 4
            width: parent.height - 8
            height: width
            radius: width / 2
            color: control.checked ? Theme.textOnAccent : Theme.quietText

            Behavior on x {
                NumberAnimation {
                    duration: Theme.motion
                }
            }
        }
        FocusRing {
            cornerRadius: parent.radius
            visible: control.visualFocus
        }
    }
    contentItem: Text {
        rightPadding: control.indicator.width + control.spacing
        text: control.text
        font: control.font
        color: Theme.text
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
    }
}
