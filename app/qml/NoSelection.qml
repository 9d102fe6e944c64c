import QtQuick
import QtQuick.Layouts
import Trellivar

// The panel while no key is selected.
Item {
    implicitHeight: column.implicitHeight

    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.unit

        Keycap {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Theme.unit * 2
            implicitWidth: Theme.capDrawn
            implicitHeight: Theme.capDrawn
            opacity: 0.6
            Accessible.ignored: true
        }
        Text {
            Layout.fillWidth: true
            text: App.mapping.title
            color: Theme.text
            font.pixelSize: Theme.large
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        Text {
            Layout.fillWidth: true
            text: App.texts.helpAssignFirst
            color: Theme.quietText
            font.pixelSize: Theme.body
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
        }
    }
}
