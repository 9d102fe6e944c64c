import QtQuick
import QtQuick.Layouts
import Trellivar

// The switch of the pad, and how the pad is connected.
RowLayout {
    Segmented {
        name: "Mode"
        choices: [
            {
                value: "P",
                text: "P"
            },
            {
                value: "M",
                text: "M"
            },
            {
                value: "R",
                text: "R"
            }
        ]
        value: Desk.mode
        onChosen: value => Desk.setMode(value)
    }
    Item {
        Layout.fillWidth: true
    }
    Segmented {
        name: "Connection"
        choices: [
            {
                value: "usb",
                text: "Cable"
            },
            {
                value: "bluetooth",
                text: "Bluetooth"
            },
            {
                value: "away",
                text: "Away"
            }
        ]
        value: Desk.link
        onChosen: value => Desk.setLink(value)
    }
}
