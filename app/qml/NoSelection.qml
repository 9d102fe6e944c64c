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

        Rectangle {
            Layout.alignment: Qt.AlignHCenter
            Layout.bottomMargin: Theme.unit * 2
            implicitWidth: Theme.ringSize
            implicitHeight: Theme.ringSize
            radius: Theme.radius * 1.6
            color: "transparent"
            border.width: 2
            border.color: Theme.line

            Rectangle {
                anchors.centerIn: parent
                width: Theme.unit * 3
                height: 2
                color: Theme.quietText
            }
            Rectangle {
                anchors.centerIn: parent
                width: 2
                height: Theme.unit * 3
                color: Theme.quietText
            }
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
