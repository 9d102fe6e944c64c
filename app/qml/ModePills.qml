import QtQuick
import Trellivar

// The modes of the pad; one of them is active.
ArrowRow {
    spacing: Theme.unit / 2

    Repeater {
        model: App.mapping.modes

        ModePill {}
    }
}
