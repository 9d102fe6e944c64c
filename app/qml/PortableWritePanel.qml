import QtQuick
import QtQuick.Layouts
import Trellivar

// Writes every mode into the pad, and tells how that goes.
RowLayout {
    id: panel

    readonly property bool isWriting: App.write.state === "writing"

    spacing: Theme.unit * 3

    Item {
        Layout.preferredWidth: Theme.writeWidth
        Layout.preferredHeight: button.implicitHeight

        ActionButton {
            id: button

            anchors.fill: parent
            visible: !panel.isWriting
            kind: ActionButton.Primary
            text: App.texts.writeToPad
            onClicked: App.write.write()
        }
        ColumnLayout {
            anchors.fill: parent
            visible: panel.isWriting
            spacing: Theme.unit

            Text {
                text: App.texts.writing
                color: Theme.text
                font.pixelSize: Theme.body
                Accessible.role: Accessible.ProgressBar
                Accessible.name: text
            }
            ProgressLine {
                Layout.fillWidth: true
            }
        }
    }
    Text {
        Layout.fillWidth: true
        Layout.preferredWidth: Theme.sideWidth
        text: App.texts.writeHelper
        color: Theme.quietText
        font.pixelSize: Theme.small
        wrapMode: Text.Wrap
    }
    WriteStatus {
        Layout.fillWidth: true
        Layout.preferredWidth: Theme.sideWidth
        visible: App.write.text.length > 0 && !panel.isWriting
    }
}
