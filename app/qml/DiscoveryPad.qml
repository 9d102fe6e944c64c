import QtQuick
import QtQuick.Layouts
import Trellivar

// The pad with what is asked for marked on it: its switch, or a key. Keys that are known have a tick, and
// what they send below the pad.
ColumnLayout {
    id: view

    required property string step

    spacing: Theme.unit * 2

    PadBody {
        id: pad

        Layout.alignment: Qt.AlignHCenter
        mode: App.discovery?.mode ?? ""
        link: App.devices.link
        isSwitchMarked: view.step === "flipSwitch"

        Repeater {
            model: App.discovery?.keys ?? null

            Keycap {
                required property int keyId
                required property bool isCaptured
                required property bool isAsked

                height: parent ? parent.height : 0
                width: height
                number: keyId
                isSelected: isAsked
                isTicked: isCaptured
            }
        }
    }
    RowLayout {
        Layout.fillWidth: true
        spacing: Theme.unit

        Repeater {
            model: App.discovery?.keys ?? null

            Text {
                required property string name
                required property bool isCaptured

                Layout.fillWidth: true
                Layout.preferredWidth: 1
                text: isCaptured ? "✓ " + name : " "
                color: Theme.success
                font.pixelSize: Theme.small
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                Accessible.role: Accessible.StaticText
                Accessible.name: isCaptured ? App.texts.captured + " " + name : ""
                Accessible.ignored: !isCaptured
            }
        }
    }
}
