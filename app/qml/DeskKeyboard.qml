import QtQuick
import QtQuick.Layouts
import Trellivar

// A few keys of an ordinary keyboard. Modifiers stay down until they are pressed again, so that chords
// can be made with a mouse.
ColumnLayout {
    id: keyboard

    readonly property var modifiers: [["⇧", "left_shift"], ["⌃", "left_control"], ["⌥", "left_option"], ["⌘", "left_command"]]
    readonly property var keys: [["A", "a"], ["C", "c"], ["V", "v"], ["X", "x"], ["Z", "z"], ["Space", "spacebar"], ["⏎", "return_or_enter"]]

    spacing: Theme.unit / 2

    RowLayout {
        spacing: Theme.unit / 2

        Repeater {
            model: keyboard.modifiers

            DeskModifier {
                required property var modelData

                Layout.fillWidth: true
                Layout.preferredWidth: 1
                label: modelData[0]
                keyName: modelData[1]
            }
        }
    }
    RowLayout {
        spacing: Theme.unit / 2

        Repeater {
            model: keyboard.keys

            KeyboardKey {
                required property var modelData

                Layout.fillWidth: true
                Layout.preferredWidth: implicitContentWidth + Theme.unit * 3
                implicitHeight: Theme.controlHeight
                label: modelData[0]
                name: modelData[1].replace(/_/g, " ")
                isChosen: down
                onPressed: Desk.keyDown(modelData[1])
                onReleased: Desk.keyUp(modelData[1])
                onCanceled: Desk.keyUp(modelData[1])
            }
        }
    }
}
