import QtQuick
import QtQuick.Layouts
import Trellivar

// The captions of the keys, each with a line down to its key.
ArrowKeys {
    id: captions

    required property real leader

    implicitHeight: row.implicitHeight

    RowLayout {
        id: row

        width: captions.width
        spacing: Theme.unit

        Repeater {
            model: App.mapping.keys

            ActionPill {
                Layout.fillWidth: true
                Layout.preferredWidth: 1
                Layout.alignment: Qt.AlignBottom
            }
        }
    }
}
