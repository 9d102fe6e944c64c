import QtQuick
import Trellivar

// Writes into the pad; meanwhile it is a line of progress.
Item {
    id: place

    readonly property bool isWriting: App.write.state === "writing"

    implicitWidth: Theme.writeWidth
    implicitHeight: Theme.controlHeight

    ActionButton {
        anchors.fill: parent
        visible: !place.isWriting
        isPrimary: true
        text: App.texts.writeToPad
        onClicked: App.write.write()
    }
    Text {
        visible: place.isWriting
        text: App.texts.writing
        color: Theme.text
        font.pixelSize: Theme.body
        Accessible.role: Accessible.ProgressBar
        Accessible.name: text
    }
    ProgressLine {
        anchors.bottom: parent.bottom
        width: parent.width
        visible: place.isWriting
    }
}
