import QtQuick
import QtQuick.Layouts
import Trellivar

// Teaches the application one mode of the pad, with one task at a time.
Sheet {
    id: sheet

    readonly property string step: App.discovery?.step ?? ""
    readonly property string error: App.discovery?.error ?? ""
    // What the button does in each step.
    readonly property var actions: ({
            flipSwitch: () => App.discovery.checkPresence(),
            pressKey: () => App.discovery.capture(),
            review: () => App.discovery.save(),
            done: () => sheet.close()
        })

    title: App.discovery?.sheetTitle ?? ""
    width: Theme.unit * 60
    onOpened: action.forceActiveFocus(Qt.TabFocusReason)
    onClosed: App.closeDiscovery()

    Connections {
        target: App.discovery

        // A key that is asked for is listened for.
        function onStepChanged() {
            App.discovery.capture();
        }
    }
    DiscoveryPad {
        Layout.alignment: Qt.AlignHCenter
        step: sheet.step
    }
    DiscoveryTask {
        Layout.fillWidth: true
    }
    Text {
        Layout.fillWidth: true
        visible: sheet.error.length > 0
        text: sheet.error
        color: Theme.error
        font.pixelSize: Theme.body
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        Accessible.role: Accessible.AlertMessage
        Accessible.name: text
    }
    Item {
        Layout.fillWidth: true
        implicitHeight: Theme.controlHeight

        Listening {
            anchors.centerIn: parent
            visible: App.discovery?.isCapturing ?? false
        }
        ActionButton {
            id: action

            anchors.centerIn: parent
            visible: !(App.discovery?.isCapturing ?? true)
            text: App.discovery?.action ?? ""
            isPrimary: true
            onVisibleChanged: if (visible)
                forceActiveFocus(Qt.TabFocusReason)
            onClicked: sheet.actions[sheet.step]()
        }
    }
}
