import QtQuick
import Trellivar

// The modes of the pad; one of them is active.
Row {
    id: row

    spacing: Theme.unit / 2

    Repeater {
        id: pills

        model: App.mapping.modes

        ModePill {
            onMoved: to => {
                const next = pills.itemAt(to);
                if (next)
                    next.forceActiveFocus(Qt.TabFocusReason);
            }
        }
    }
}
