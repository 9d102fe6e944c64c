import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// What the selected key can be given: a shortcut that is recorded or composed, or a ready output.
FocusScope {
    id: controls

    signal pickerRequested

    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        width: parent.width
        spacing: Theme.unit

        Text {
            Layout.fillWidth: true
            visible: learnButton.visible
            text: App.texts.errLearnFirst
            color: Theme.quietText
            font.pixelSize: Theme.small
            wrapMode: Text.Wrap
        }
        ActionButton {
            id: learnButton

            Layout.fillWidth: true
            Layout.bottomMargin: Theme.unit
            visible: !App.mapping.canAssign
            kind: ActionButton.Primary
            text: App.mapping.learnText
            onClicked: App.mapping.learn()
        }
        ActionButton {
            Layout.fillWidth: true
            focus: true
            text: App.texts.recordCustom
            onClicked: App.mapping.record()
        }
        ActionButton {
            Layout.fillWidth: true
            text: App.texts.chooseOnKeyboard
            onClicked: controls.pickerRequested()
        }
        Rectangle {
            Layout.fillWidth: true
            Layout.topMargin: Theme.unit
            Layout.bottomMargin: Theme.unit
            implicitHeight: 1
            color: Theme.line
        }
        GridLayout {
            Layout.fillWidth: true
            enabled: App.mapping.canAssign
            columns: 2
            columnSpacing: Theme.unit / 2
            rowSpacing: Theme.unit / 2

            Repeater {
                model: App.mapping.library

                LibraryItem {
                    Layout.fillWidth: true
                    Layout.preferredWidth: 1
                    onClicked: App.mapping.assign(index)
                }
            }
        }
    }
}
