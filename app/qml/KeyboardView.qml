import QtQuick
import Trellivar

// The keyboard on which a shortcut is composed. Tab passes it as one control; the arrow keys move
// between its keys.
Column {
    id: keyboard

    property string current
    readonly property real units: 14.5

    function move(from: Item, row: int, across: int, down: int) {
        if (across !== 0)
            return focusOn(rows.itemAt(row).besides(from, across));
        const other = rows.itemAt(row + down);
        if (other)
            focusOn(other.nearest(from.x + from.width / 2));
    }
    function focusOn(key: Item) {
        if (key)
            key.forceActiveFocus(Qt.TabFocusReason);
    }
    function focusOnFirst() {
        focusOn(rows.itemAt(0).nearest(0));
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
            onMoved: (key, across, down) => keyboard.move(key, index, across, down)
        }
    }
}
