import QtQuick
import Trellivar

// A choice of one among a few segments. The arrow keys choose; Tab passes it as one control.
Rectangle {
    id: control

    required property string name
    default property alias segments: row.data

    function move(by: int) {
        const all = [];
        for (let i = 0; i < row.children.length; ++i) {
            const segment = row.children[i] as Segment;
            if (segment)
                all.push(segment);
        }
        const next = all[all.findIndex(segment => segment.activeFocus) + by];
        if (!next)
            return;
        next.forceActiveFocus(Qt.TabFocusReason);
        next.clicked();
    }

    implicitWidth: row.width + Theme.unit / 2
    implicitHeight: row.height + Theme.unit / 2
    radius: height / 2
    color: Theme.raised
    Accessible.role: Accessible.Grouping
    Accessible.name: name
    Keys.onLeftPressed: move(-1)
    Keys.onRightPressed: move(1)

    Row {
        id: row

        x: Theme.unit / 4
        y: Theme.unit / 4
    }
}
