import QtQuick
import Trellivar

// The connection of the pad, its modes, and the settings.
Item {
    id: bar

    signal settingsRequested

    implicitHeight: Theme.barHeight

    DeviceChip {
        x: Theme.unit * 3
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, modes.x - x - Theme.unit * 2)
    }
    Segmented {
        id: modes

        anchors.centerIn: parent
        name: App.texts.active

        Repeater {
            model: App.mapping.modes

            ModeSegment {}
        }
    }
    SettingsButton {
        anchors.right: parent.right
        anchors.rightMargin: Theme.unit * 3
        anchors.verticalCenter: parent.verticalCenter
        onClicked: bar.settingsRequested()
    }
    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: 1
        color: Theme.line
    }
}
