import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// What the way in which the pad is connected means, and another look for it.
FloatingPanel {
    width: Theme.popoverWidth
    padding: Theme.unit * 2
    closePolicy: Popup.CloseOnEscape | Popup.CloseOnPressOutsideParent

    background: Item {
        SoftShadow {
            anchors.fill: parent
            anchors.topMargin: Theme.unit
            anchors.bottomMargin: -Theme.unit / 2
        }
        Rectangle {
            anchors.fill: parent
            radius: Theme.radius
            color: Theme.panel
            border.width: 1
            border.color: Theme.line
        }
    }
    contentItem: ColumnLayout {
        spacing: Theme.unit * 2

        Text {
            Layout.fillWidth: true
            text: App.devices.explanation
            color: Theme.text
            font.pixelSize: Theme.body
            lineHeight: 1.2
            wrapMode: Text.Wrap
        }
        ActionButton {
            text: App.texts.refresh
            onClicked: App.devices.lookAgain()
        }
    }
}
