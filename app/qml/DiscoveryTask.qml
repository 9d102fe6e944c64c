import QtQuick
import Trellivar

// What is asked for, large and small.
Column {
    spacing: Theme.unit / 2

    Text {
        width: parent.width
        text: App.discovery?.title ?? ""
        color: Theme.text
        font.pixelSize: Theme.large
        font.weight: Font.DemiBold
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
    Text {
        width: parent.width
        visible: text.length > 0
        text: App.discovery?.detail ?? ""
        color: Theme.quietText
        font.pixelSize: Theme.body
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
