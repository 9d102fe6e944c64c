import QtQuick
import QtQuick.Layouts
import Trellivar

// Which key is selected, and large what it does.
ColumnLayout {
    spacing: Theme.unit / 2

    Text {
        Layout.fillWidth: true
        text: App.mapping.title
        color: Theme.quietText
        font.pixelSize: Theme.body
        wrapMode: Text.Wrap
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.unit

        Glyph {
            implicitWidth: Theme.unit * 3
            implicitHeight: implicitWidth
            name: App.mapping.glyph
        }
        Text {
            Layout.fillWidth: true
            text: App.mapping.legend || App.texts.empty
            color: App.mapping.legend ? Theme.text : Theme.quietText
            font.pixelSize: Theme.large
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
        }
    }
}
