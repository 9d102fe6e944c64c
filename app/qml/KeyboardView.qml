import QtQuick
import Trellivar

// The keyboard on which a shortcut is composed. Tab passes it as one control; the arrow keys move
// between its keys.
Column {
    id: keyboard

    // The width of each row, in plain keys.
    readonly property real units: 14.5
    readonly property PickerKey focused: Window.activeFocusItem as PickerKey
    property string current

    function rowAt(index: int): KeyboardRow {
        return rows.itemAt(index) as KeyboardRow;
    }
    function move(across: int, down: int) {
        if (!focused)
            return;
        const from = focused.parent as KeyboardRow;
        const to = rowAt(from.index + down);
        const key = across === 0 ? to?.nearest(focused.x + focused.width / 2) : from.besides(focused, across);
        if (key)
            key.forceActiveFocus(Qt.TabFocusReason);
    }
    function first(): PickerKey {
        return rowAt(0).nearest(0);
    }

    onFocusedChanged: if (focused)
        current = focused.keyId
    spacing: Theme.unit / 2
    Accessible.role: Accessible.Grouping
    Keys.onLeftPressed: move(-1, 0)
    Keys.onRightPressed: move(1, 0)
    Keys.onUpPressed: move(0, -1)
    Keys.onDownPressed: move(0, 1)

    Repeater {
        id: rows

        model: App.picker.rows

        KeyboardRow {
            required property var modelData

            keys: modelData
            unitWidth: (parent as KeyboardView) ? (parent.width + spacing) / (parent as KeyboardView).units : 0
            current: (parent as KeyboardView)?.current ?? ""
        }
    }
}
