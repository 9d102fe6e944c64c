import QtQuick
import QtQuick.Layouts
import Trellivar

// A setting: what it is called on one side, its control on the other.
RowLayout {
    property alias text: label.text

    Layout.fillWidth: true
    spacing: Theme.unit * 2

    Text {
        id: label

        Layout.fillWidth: true
        color: Theme.text
        font.pixelSize: Theme.body
        wrapMode: Text.Wrap
    }
}
