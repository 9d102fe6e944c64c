import QtQuick
import Trellivar

// One row of the drawn keyboard. All rows are equally wide; keys have widths relative to a plain one.
Row {
    id: row

    required property var keys
    required property real unitWidth
    // The key that Tab comes to.
    property string current

    signal entered(string keyId)
    signal moved(Item key, int across, int down)

    // The key nearest to a place across the row.
    function nearest(x: real): Item {
        let best = null;
        for (let i = 0; i < repeater.count; ++i) {
            const key = repeater.itemAt(i);
            if (!key.isSpacer && (!best || distance(key, x) < distance(best, x)))
                best = key;
        }
        return best;
    }
    function distance(key: Item, x: real): real {
        return Math.abs(key.x + key.width / 2 - x);
    }
    function besides(key: Item, step: int): Item {
        let index = key.index + step;
        while (index >= 0 && index < repeater.count && repeater.itemAt(index).isSpacer)
            index += step;
        return repeater.itemAt(index);
    }

    spacing: Theme.unit / 2

    Repeater {
        id: repeater

        model: row.keys

        KeyboardKey {
            id: key

            required property var modelData
            required property int index
            readonly property string keyId: modelData.keyId

            width: modelData.width * row.unitWidth - row.spacing
            label: modelData.label
            name: modelData.name
            isSpacer: modelData.isSpacer
            isChosen: App.picker.chosen.includes(keyId)
            focusPolicy: row.current === keyId ? Qt.StrongFocus : Qt.ClickFocus
            onActiveFocusChanged: if (activeFocus)
                row.entered(keyId)
            onClicked: App.picker.toggle(keyId)
            Keys.onLeftPressed: row.moved(key, -1, 0)
            Keys.onRightPressed: row.moved(key, 1, 0)
            Keys.onUpPressed: row.moved(key, 0, -1)
            Keys.onDownPressed: row.moved(key, 0, 1)
        }
    }
}
