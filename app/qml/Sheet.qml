import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import QtQuick.Templates as T
import Trellivar

// A task of its own over the window. Escape and the button at its corner close it.
Popup {
    id: sheet

    property string title
    property string subtitle
    default property alias content: body.data

    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    anchors.centerIn: T.Overlay.overlay
    padding: Theme.unit * 3

    T.Overlay.modal: Rectangle {
        color: Theme.shade
    }
    background: Rectangle {
        color: Theme.panel
        radius: Theme.radius * 1.6
        border.width: 1
        border.color: Theme.line
    }
    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motion
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.motion
        }
    }

    contentItem: ColumnLayout {
        spacing: Theme.unit * 2

        RowLayout {
            Layout.fillWidth: true
            spacing: Theme.unit * 2

            ColumnLayout {
                Layout.fillWidth: true
                spacing: 2

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
                Text {
                    Layout.fillWidth: true
                    visible: text.length > 0
                    text: sheet.subtitle
                    color: Theme.quietText
                    font.pixelSize: Theme.body
                    wrapMode: Text.Wrap
                }
            }
            ActionButton {
                Layout.alignment: Qt.AlignTop
                Layout.rightMargin: -rightPadding
                text: App.texts.close
                isPlain: true
                onClicked: sheet.close()
            }
        }
        ColumnLayout {
            id: body

            Layout.fillWidth: true
            Layout.fillHeight: true
            spacing: Theme.unit * 2
        }
    }
}
