import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Layouts
import Trellivar

// Teaches the application one mode of the pad, with one task at a time.
Sheet {
    id: sheet

    readonly property string step: App.discovery?.step ?? ""
    readonly property string error: App.discovery?.error ?? ""
    readonly property bool isCapturing: App.discovery?.isCapturing ?? false
    readonly property int askedKey: App.discovery?.keyId ?? 0
    // What the button does in each step.
    readonly property var actions: ({
            flipSwitch: () => App.discovery.checkPresence(),
            pressKey: () => App.discovery.capture(),
            review: () => App.discovery.save(),
            done: () => sheet.close()
        })

    title: App.discovery?.sheetTitle ?? ""
    width: Theme.unit * 60
    entry: action
    // Escape may be what the pad sends.
    closePolicy: isCapturing ? Popup.NoAutoClose : Popup.CloseOnEscape
    onClosed: App.closeDiscovery()
    // A key that is asked for is listened for.
    onAskedKeyChanged: App.discovery?.capture()

    DiscoveryPad {
        Layout.fillWidth: true
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

        // Takes what the pad types meanwhile, so that its keys work nothing else.
        Item {
            anchors.fill: parent
            visible: sheet.isCapturing
            activeFocusOnTab: true
            Accessible.role: Accessible.StaticText
            Accessible.name: App.texts.listening
            Keys.onPressed: event => event.accepted = true
            onVisibleChanged: if (visible)
                forceActiveFocus(Qt.OtherFocusReason)

            FocusRing {
                visible: parent.activeFocus
            }
            Row {
                anchors.centerIn: parent
                spacing: Theme.unit

                TimeRing {
                    width: Theme.unit * 3
                    height: width
                    period: App.discovery?.listeningMilliseconds ?? 0
                }
                Text {
                    anchors.verticalCenter: parent.verticalCenter
                    text: App.texts.listening
                    color: Theme.text
                    font.pixelSize: Theme.body
                    Accessible.ignored: true
                }
            }
        }
        ActionButton {
            id: action

            anchors.centerIn: parent
            visible: !sheet.isCapturing
            text: App.discovery?.action ?? ""
            isPrimary: true
            onVisibleChanged: if (visible)
                forceActiveFocus(sheet.reason)
            onClicked: sheet.actions[sheet.step]()
        }
    }
}
