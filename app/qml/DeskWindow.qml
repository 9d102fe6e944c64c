import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// Stands for the hardware: the pad and its connection, the permissions, an ordinary keyboard, and what
// the computer received.
ApplicationWindow {
    id: desk

    width: 420
    height: 640
    minimumWidth: 420
    minimumHeight: 640
    visible: false
    title: "Desk"
    color: Theme.window
    // Where it hides least of the application; after that it stays where people move it.
    Component.onCompleted: {
        x = Screen.virtualX + Screen.width - width;
        visible = true;
    }

    ColumnLayout {
        anchors.fill: parent
        anchors.margins: Theme.unit * 2
        spacing: Theme.unit * 2
        focus: true
        Keys.onPressed: event => event.accepted = pad.pressByKey(event)
        Keys.onReleased: event => event.accepted = pad.releaseByKey(event)

        DeskPad {
            id: pad

            Layout.alignment: Qt.AlignHCenter
            isWindowActive: desk.active
        }
        DeskConnection {
            Layout.fillWidth: true
        }
        DeskPermissions {
            Layout.fillWidth: true
        }
        DeskKeyboard {
            Layout.fillWidth: true
        }
        DeskReceived {
            Layout.fillWidth: true
            Layout.fillHeight: true
        }
    }
}
