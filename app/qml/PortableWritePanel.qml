import QtQuick
import Trellivar

// Writes every mode into the pad, and tells how that goes.
Item {
    id: panel

    readonly property real gap: Theme.unit * 3
    readonly property real room: width - button.width - gap
    readonly property bool hasNews: App.write.text.length > 0 && !button.isWriting

    // The pad above stays where it is when short news arrives.
    implicitHeight: Math.max(Theme.unit * 6.25, helper.height, hasNews ? news.height : 0)

    WriteButton {
        id: button

        width: implicitWidth
        height: implicitHeight
        anchors.verticalCenter: parent.verticalCenter
    }
    Text {
        id: helper

        anchors.verticalCenter: parent.verticalCenter
        x: button.width + panel.gap
        width: panel.hasNews ? (panel.room - panel.gap) / 2 : panel.room
        text: App.texts.writeHelper
        color: Theme.quietText
        font.pixelSize: Theme.small
        lineHeight: 1.15
        wrapMode: Text.Wrap
    }
    WriteStatus {
        id: news

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: (panel.room - panel.gap) / 2
        visible: panel.hasNews
    }
}
