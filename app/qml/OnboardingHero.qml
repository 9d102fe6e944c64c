import QtQuick
import Trellivar

// The pad that waits to be set up.
Column {
    spacing: Theme.unit * 3

    PadBody {
        capSize: Theme.unit * 10
        mode: "P"
        link: App.devices.link

        Repeater {
            model: 3

            Keycap {
                required property int index

                height: parent ? parent.height : 0
                width: height
                number: index + 1
            }
        }
    }
    Text {
        width: parent.width
        text: App.texts.heroCaption
        color: Theme.quietText
        font.pixelSize: Theme.body
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
    }
}
