import QtQuick
import QtQuick.Layouts
import Trellivar

// Composes a shortcut for the selected key on a drawn keyboard, or by typing it.
Sheet {
    id: sheet

    title: App.texts.composeShortcut
    width: Theme.unit * 94
    onAboutToShow: {
        entry = keyboard.first();
        App.picker.begin();
    }

    ColumnLayout {
        Layout.fillWidth: true
        spacing: Theme.unit * 2
        Keys.onPressed: event => event.accepted = App.picker.press(event.key, event.modifiers)
        Keys.onReleased: event => event.accepted = App.picker.release(event.key)

        Text {
            readonly property bool isEmpty: App.picker.preview.length === 0

            Layout.fillWidth: true
            Layout.minimumHeight: Theme.unit * 5
            text: isEmpty ? App.texts.clickKeysBelow : App.picker.preview
            color: isEmpty ? Theme.quietText : Theme.accent
            font.pixelSize: Theme.large
            font.weight: isEmpty ? Font.Normal : Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        KeyboardView {
            id: keyboard

            Layout.fillWidth: true
            Accessible.name: App.texts.clickKeysBelow
        }
        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.unit

            Item {
                Layout.fillWidth: true
            }
            ActionButton {
                text: App.texts.cancel
                onClicked: sheet.close()
            }
            ActionButton {
                text: App.picker.assignText
                isPrimary: true
                enabled: App.picker.canAssign
                onClicked: {
                    App.picker.assign();
                    sheet.close();
                }
            }
        }
    }
}
