import QtQuick
import QtQuick.Layouts
import Trellivar

// The pad in the middle, the modes above it, what a key can do beside it, and writing below.
Rectangle {
    id: screen

    signal settingsRequested
    signal pickerRequested

    implicitWidth: Theme.minimumWidth
    implicitHeight: Theme.minimumHeight
    color: Theme.window

    ColumnLayout {
        anchors.fill: parent
        spacing: 0

        Item {
            Layout.fillWidth: true
            Layout.preferredHeight: Theme.barHeight

            DeviceChip {
                x: Theme.unit * 3
                anchors.verticalCenter: parent.verticalCenter
            }
            ModePills {
                anchors.centerIn: parent
            }
            SettingsButton {
                anchors.right: parent.right
                anchors.rightMargin: Theme.unit * 3
                anchors.verticalCenter: parent.verticalCenter
                onClicked: screen.settingsRequested()
            }
        }
        RowLayout {
            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: 0

            ColumnLayout {
                Layout.fillWidth: true
                Layout.fillHeight: true
                spacing: 0

                PadStage {
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                }
                Text {
                    Layout.fillWidth: true
                    Layout.margins: Theme.unit * 2
                    Layout.topMargin: 0
                    text: App.devices.stageHint
                    color: Theme.quietText
                    font.pixelSize: Theme.small
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.Wrap
                }
                UndiscoveredNote {
                    Layout.fillWidth: true
                    Layout.margins: Theme.unit * 2
                    Layout.leftMargin: Theme.unit * 3
                    Layout.topMargin: 0
                    visible: App.mapping.isUndiscovered
                }
            }
            Rectangle {
                Layout.preferredWidth: Theme.sideWidth
                Layout.fillHeight: true
                Layout.rightMargin: Theme.unit * 3
                Layout.bottomMargin: Theme.unit * 2
                radius: Theme.radius * 1.6
                color: Theme.panel

                AssignPanel {
                    anchors.fill: parent
                    anchors.margins: Theme.unit * 2.5
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
}
