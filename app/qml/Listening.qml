import QtQuick
import Trellivar

// A quiet sign that a key is listened for.
Row {
    spacing: Theme.unit

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.unit
        height: width
        radius: width / 2
        color: Theme.accent
    }
    Text {
        text: App.texts.listening
        color: Theme.text
        font.pixelSize: Theme.body
    }
}
