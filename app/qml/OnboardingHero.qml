import QtQuick
import Trellivar

// The pad that waits to be set up.
Column {
    spacing: Theme.unit * 2

    PadSketch {
        mode: "P"

        Repeater {
            model: 3

            CapSketch {
                required property int index

                implicitWidth: Theme.unit * 8
                implicitHeight: Theme.unit * 8
                legend: index + 1
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
