import QtQuick
import Trellivar

// The pad with what is asked for marked on it: its switch, or a key. Keys that are known have a tick, and
// what they send below the pad.
Column {
    id: view

    required property string step
    readonly property int columnWidth: Theme.unit * 14

    spacing: Theme.unit

    PadSketch {
        anchors.horizontalCenter: parent.horizontalCenter
        mode: App.discovery?.mode ?? ""
        isSwitchMarked: view.step === "flipSwitch"

        Repeater {
            model: App.discovery?.keys ?? null

            CapSketch {
                required property int keyId
                required property bool isCaptured
                required property bool isAsked

                legend: keyId
                isMarked: isAsked
                isTicked: isCaptured
            }
        }
    }
    Row {
        anchors.horizontalCenter: parent.horizontalCenter

        Repeater {
            model: App.discovery?.keys ?? null

            Text {
                required property int keyId
                required property string name
                required property bool isCaptured

                width: view.columnWidth
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
