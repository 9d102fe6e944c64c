import QtQuick
import QtQuick.Layouts
import Trellivar

// Tells quietly what keeps the pad from working as it should, and offers to do something about it.
Rectangle {
    implicitHeight: row.implicitHeight + 2 * Theme.unit * 1.5
    visible: App.note.title.length > 0
    radius: Theme.radius
    color: Theme.accentQuiet

    RowLayout {
        id: row

        x: Theme.unit * 2
        y: Theme.unit * 1.5
        width: parent.width - Theme.unit * 4
        spacing: Theme.unit * 2

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 4

            Text {
                Layout.fillWidth: true
                text: App.note.title
                color: Theme.text
                font.pixelSize: Theme.body
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.AlertMessage
                Accessible.name: text
                Accessible.description: App.note.detail
            }
            Text {
                Layout.fillWidth: true
                text: App.note.detail
                color: Theme.quietText
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
            }
        }
        ActionButton {
            Layout.maximumWidth: Theme.unit * 24
            visible: text.length > 0
            text: App.note.action
            onClicked: App.followNote()
        }
    }
}
