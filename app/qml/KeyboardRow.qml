import QtQuick
import Trellivar

// One row of the drawn keyboard. All rows are equally wide; keys have widths relative to a plain one.
Row {
    id: row

    required property var keys
    required property int index
    property real unitWidth
    property string current

    function keyAt(index: int): PickerKey {
        return repeater.itemAt(index) as PickerKey;
    }
    function distance(key: Item, x: real): real {
        return Math.abs(key.x + key.width / 2 - x);
    }
    // The key nearest to a place across the row.
    function nearest(x: real): PickerKey {
        let best = null;
        for (let i = 0; i < repeater.count; ++i) {
            const key = keyAt(i);
            if (!key.isSpacer && (!best || distance(key, x) < distance(best, x)))
                best = key;
        }
        return best;
    }
    // The next key to a side; null at the end.
    function besides(key: PickerKey, step: int): PickerKey {
        let next = keyAt(key.index + step);
        while (next && next.isSpacer)
            next = keyAt(next.index + step);
        return next;
    }

    spacing: Theme.unit / 2

    Repeater {
        id: repeater

        model: row.keys

        PickerKey {
            required label
            required name
            required isSpacer
            required isChosen

            unitWidth: (parent as KeyboardRow)?.unitWidth ?? 0
            gap: (parent as KeyboardRow)?.spacing ?? 0
            current: (parent as KeyboardRow)?.current ?? ""
        }
    }
}
