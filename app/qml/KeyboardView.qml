import QtQuick
import Trellivar

// The keyboard on which a shortcut is composed. Tab passes it as one control; the arrow keys move
// between its keys.
Column {
    id: keyboard

    property string current
    // The width of each row, in plain keys.
    readonly property real units: 14.5

    function rowAt(index: int): KeyboardRow {
        return rows.itemAt(index) as KeyboardRow;
    }
    function move(from: PickerKey, row: int, across: int, down: int) {
        const to = rowAt(row + down);
        if (to)
            focusOn(across === 0 ? to.nearest(from.x + from.width / 2) : to.besides(from, across));
    }
    function focusOn(key: PickerKey) {
        if (key)
            key.forceActiveFocus(Qt.TabFocusReason);
    }
    function focusOnFirst() {
        focusOn(rowAt(0).nearest(0));
    }

    spacing: Theme.unit / 2
    Accessible.role: Accessible.Grouping

    Repeater {
        id: rows

        model: App.picker.rows

        KeyboardRow {
            required property var modelData
            required property int index

            keys: modelData
            unitWidth: (keyboard.width + spacing) / keyboard.units
            current: keyboard.current
            onEntered: keyId => keyboard.current = keyId
            onMoved: (key, across, down) => keyboard.move(key as PickerKey, index, across, down)
        }
    }
}
