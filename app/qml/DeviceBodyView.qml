import QtQuick
import Trellivar

// The pad with its keys, each to be selected. Its switch and its light follow the real ones.
PadBody {
    mode: App.devices.padMode || App.mapping.activeMode
    link: App.devices.link

    Repeater {
        model: App.mapping.keys

        KeycapView {}
    }
}
