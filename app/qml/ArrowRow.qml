import QtQuick
import Trellivar

// Controls side by side, between which the arrow keys move.
Row {
    id: row

    function move(by: int) {
        const stops = [];
        for (let i = 0; i < children.length; ++i) {
            if (children[i].activeFocusOnTab)
                stops.push(children[i]);
        }
        const next = stops[stops.findIndex(stop => stop.activeFocus) + by];
        if (next)
            next.forceActiveFocus(Qt.TabFocusReason);
    }

    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)
}
