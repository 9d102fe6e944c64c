import QtQuick
import QtQuick.Layouts
import Trellivar

// What the selected key can be given: a shortcut that is recorded or composed, or a ready output.
FocusScope {
    id: controls

    signal pickerRequested

    readonly property bool canAssign: App.mapping.canAssign

    // What was used last may be hidden when the keyboard comes back.
    onCanAssignChanged: (canAssign ? recordButton : learnButton).focus = true
    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        width: parent.width
        spacing: Theme.unit

        ActionButton {
            id: recordButton

            Layout.fillWidth: true
            focus: true
            enabled: controls.canAssign
            text: App.texts.recordCustom
            onClicked: App.mapping.record()
        }
        ActionButton {
            Layout.fillWidth: true
            enabled: controls.canAssign
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
        ArrowKeys {
            Layout.fillWidth: true
            visible: controls.canAssign
            implicitHeight: library.implicitHeight

            Flow {
                id: library

                width: parent.width
                spacing: Theme.unit

                Repeater {
                    model: App.mapping.library

                    LibraryItem {
                        onClicked: App.mapping.assign(index)
                    }
                }
            }
        }
        Text {
            Layout.fillWidth: true
            visible: learnButton.visible
            text: App.texts.errLearnFirst
            color: Theme.quietText
            font.pixelSize: Theme.body
            wrapMode: Text.Wrap
        }
        ActionButton {
            id: learnButton

            Layout.fillWidth: true
            visible: !controls.canAssign
            isPrimary: true
            text: App.mapping.learnText
            onClicked: App.mapping.learn()
        }
    }
}
