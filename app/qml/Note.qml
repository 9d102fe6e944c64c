import QtQuick
import QtQuick.Layouts
import Trellivar

// Tells quietly what keeps the pad from working as it should, and offers to do something about it.
Rectangle {
    id: note

    required property string title
    required property string detail
    // The text of its button; empty without one.
    required property string action
    // Only the title is written out.
    property bool isBrief: false

    signal actionRequested

    // The keyboard does not go with it, nor come back to it when the window or a sheet gives it back.
    onVisibleChanged: {
        if (visible)
            return;
        if (button.activeFocus)
            button.nextItemInFocusChain().forceActiveFocus(button.focusReason);
        button.focus = false;
    }
    implicitHeight: row.implicitHeight + 2 * row.y
    radius: Theme.radius
    color: Theme.accentQuiet

    RowLayout {
        id: row

        x: Theme.unit * 2
        y: note.isBrief ? Theme.unit / 2 : Theme.unit * 1.5
        width: note.width - Theme.unit * 4
        spacing: Theme.unit * 2

        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 4

            Text {
                Layout.fillWidth: true
                text: note.title
                color: Theme.text
                font.pixelSize: Theme.body
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.AlertMessage
                // The whole of it: of two troubles in turn only the detail differs.
                Accessible.name: note.title + "\n" + note.detail
            }
            Text {
                Layout.fillWidth: true
                visible: !note.isBrief
                text: note.detail
                color: Theme.quietText
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
            }
        }
        ActionButton {
            id: button

            Layout.maximumWidth: Theme.unit * 24
            visible: text.length > 0
            text: note.action
            onClicked: note.actionRequested()
        }
    }
}
