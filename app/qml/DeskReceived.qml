import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// What the computer received, the newest at the end. What comes from the application is in its colour.
ColumnLayout {
    id: view

    spacing: Theme.unit

    RowLayout {
        Layout.fillWidth: true

        Text {
            Layout.fillWidth: true
            text: "Received by the computer"
            color: Theme.quietText
            font.pixelSize: Theme.small
            font.weight: Font.DemiBold
        }
        ActionButton {
            Layout.rightMargin: -rightPadding
            text: "Clear"
            isPlain: true
            enabled: list.count > 0
            onClicked: Desk.clear()
        }
    }
    Rectangle {
        Layout.fillWidth: true
        Layout.fillHeight: true
        radius: Theme.radius
        color: Theme.panel
        border.width: 1
        border.color: Theme.line

        ListView {
            id: list

            anchors.fill: parent
            anchors.margins: Theme.unit
            clip: true
            activeFocusOnTab: true
            model: Desk.received
            onCountChanged: positionViewAtEnd()
            Keys.onUpPressed: flick(0, Theme.unit * 60)
            Keys.onDownPressed: flick(0, -Theme.unit * 60)
            Accessible.role: Accessible.List
            Accessible.name: "Received by the computer"
            ScrollBar.vertical: ScrollBar {}

            delegate: DeskReceivedRow {
                width: ListView.view.width
            }
        }
        FocusRing {
            visible: list.activeFocus
        }
    }
}
