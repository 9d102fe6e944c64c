import QtQuick
import QtQuick.Layouts
import Trellivar

// The switch of the pad, and how the pad is connected.
RowLayout {
    Segmented {
        name: "Mode"

        Segment {
            text: "P"
            isChosen: Desk.mode === text
            onClicked: Desk.setMode(text)
        }
        Segment {
            text: "M"
            isChosen: Desk.mode === text
            onClicked: Desk.setMode(text)
        }
        Segment {
            text: "R"
            isChosen: Desk.mode === text
            onClicked: Desk.setMode(text)
        }
    }
    Item {
        Layout.fillWidth: true
    }
    Segmented {
        name: "Connection"

        Segment {
            text: "Cable"
            isChosen: Desk.link === "usb"
            onClicked: Desk.setLink("usb")
        }
        Segment {
            text: "Bluetooth"
            isChosen: Desk.link === "bluetooth"
            onClicked: Desk.setLink("bluetooth")
        }
        Segment {
            text: "Away"
            isChosen: Desk.link === "away"
            onClicked: Desk.setLink("away")
        }
    }
}
