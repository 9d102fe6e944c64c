import QtQuick
import Trellivar

// One thing that the computer received.
Row {
    id: row

    required property string text
    required property bool isFromEngine

    spacing: Theme.unit
    Accessible.role: Accessible.ListItem
    Accessible.name: text
    Accessible.description: isFromEngine ? "Made by Trellivar" : ""

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.unit - 2
        height: width
        radius: width / 2
        color: row.isFromEngine ? Theme.accent : "transparent"
        border.width: 1
        border.color: row.isFromEngine ? Theme.accent : Theme.quietText
    }
    Text {
        width: row.width - x
        text: row.text
        color: row.isFromEngine ? Theme.accent : Theme.text
        font.pixelSize: Theme.body
        wrapMode: Text.Wrap
    }
}
