import QtQuick
import Trellivar

// What has become of the last write, with a line for each mode.
Column {
    id: status

    readonly property var colors: ({
            "needPad": Theme.warning,
            "error": Theme.error,
            "done": Theme.success
        })

    spacing: Theme.unit / 2

    Text {
        width: parent.width
        text: App.write.text
        color: status.colors[App.write.state] ?? Theme.text
        font.pixelSize: Theme.body
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Flow {
        width: parent.width
        spacing: Theme.unit / 4

        Repeater {
            model: App.write.lines

            Text {
                required property string modelData

                width: Math.min(implicitWidth, parent ? parent.width : implicitWidth)
                rightPadding: Theme.unit * 2
                text: modelData
                color: Theme.text
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
            }
        }
    }
}
