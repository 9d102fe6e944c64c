import QtQuick
import QtQuick.Layouts
import Trellivar

// The pad in the middle, the modes above it, what a key can do beside it, and writing below.
ColumnLayout {
    id: screen

    signal settingsRequested
    signal pickerRequested

    spacing: 0

    TopBar {
        Layout.fillWidth: true
        onSettingsRequested: screen.settingsRequested()
    }
    RowLayout {
        Layout.fillWidth: true
        Layout.fillHeight: true
        spacing: 0

        ColumnLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.unit * 2

            PadStage {
                Layout.fillWidth: true
                Layout.fillHeight: true
            }
            Text {
                Layout.fillWidth: true
                Layout.leftMargin: Theme.unit * 3
                Layout.rightMargin: Theme.unit * 3
                visible: !notes.isTight || App.notes.count < 2
                text: App.devices.stageHint
                color: Theme.quietText
                font.pixelSize: Theme.small
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
            }
            Notes {
                id: notes

                Layout.fillWidth: true
                isTight: screen.height < Theme.unit * 90
                Layout.leftMargin: Theme.unit * 3
                Layout.rightMargin: Theme.unit * 3
            }
            Item {}
        }
        Rectangle {
            Layout.fillHeight: true
            implicitWidth: Theme.sideWidth
            color: Theme.panel

            AssignPanel {
                anchors.fill: parent
                anchors.margins: Theme.unit * 3
                onPickerRequested: screen.pickerRequested()
            }
        }
    }
    Rectangle {
        Layout.fillWidth: true
        implicitHeight: 1
        color: Theme.line
    }
    PortableWritePanel {
        Layout.fillWidth: true
        Layout.margins: Theme.unit * 2
        Layout.leftMargin: Theme.unit * 3
        Layout.rightMargin: Theme.unit * 3
    }
}
