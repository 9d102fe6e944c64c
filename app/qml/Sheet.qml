import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Trellivar

// A task of its own over the window, with a button that closes it.
FloatingPanel {
    id: sheet

    property string title

    modal: true
    anchors.centerIn: T.Overlay.overlay
    padding: Theme.unit * 3

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        color: Theme.panel
        radius: Theme.largeRadius
        border.width: 1
        border.color: Theme.line
    }
    contentItem: ColumnLayout {
        spacing: Theme.unit * 2

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.unit * 2

            Text {
                Layout.fillWidth: true
                text: sheet.title
                color: Theme.text
                font.pixelSize: Theme.large
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            ActionButton {
                Layout.alignment: Qt.AlignTop
                Layout.rightMargin: -rightPadding
                text: App.texts.close
                isPlain: true
                onClicked: sheet.close()
            }
        }
    }
}
