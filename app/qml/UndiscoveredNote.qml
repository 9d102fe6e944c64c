import QtQuick
import QtQuick.Layouts
import Trellivar

// Tells that the pad's keys are not known in this mode, and offers to find out.
Rectangle {
    implicitHeight: row.implicitHeight + 2 * Theme.unit * 1.5
    radius: Theme.radius
    color: Theme.accentQuiet

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.margins: Theme.unit * 1.5
        anchors.leftMargin: Theme.unit * 2
        spacing: Theme.unit * 2

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            Text {
                Layout.fillWidth: true
                text: App.mapping.undiscoveredTitle
                color: Theme.text
                font.pixelSize: Theme.body
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
            }
            Text {
                Layout.fillWidth: true
                text: App.texts.undiscoveredDetail
                color: Theme.quietText
                font.pixelSize: Theme.small
                wrapMode: Text.Wrap
            }
        }
        ActionButton {
            text: App.texts.discoverThisMode
            onClicked: App.openDiscovery()
        }
    }
}
