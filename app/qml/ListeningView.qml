import QtQuick
import QtQuick.Layouts
import Trellivar

// Quiet while keys are listened to. It takes the keys typed meanwhile, so that they work nothing else.
FocusScope {
    id: view

    required property string prompt
    required property int period
    // Even Tab belongs to what is listened to.
    property bool isTabTaken: false

    signal canceled

    function listen() {
        listener.forceActiveFocus(Qt.OtherFocusReason);
    }

    implicitHeight: column.implicitHeight

    Item {
        id: listener

        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        Accessible.role: Accessible.StaticText
        Accessible.name: view.prompt
        Keys.onPressed: event => {
            const isTab = event.key === Qt.Key_Tab || event.key === Qt.Key_Backtab;
            event.accepted = view.isTabTaken || !isTab;
        }
    }
    ColumnLayout {
        id: column

        anchors.left: parent.left
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: Theme.unit * 2

        TimeRing {
            Layout.alignment: Qt.AlignHCenter
            period: view.period
        }
        Text {
            Layout.fillWidth: true
            padding: Theme.unit
            text: view.prompt
            color: Theme.text
            font.pixelSize: Theme.body
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            Accessible.ignored: true

            FocusRing {
                visible: listener.activeFocus
            }
        }
        ActionButton {
            Layout.alignment: Qt.AlignHCenter
            text: App.texts.cancel
            focusPolicy: view.isTabTaken ? Qt.NoFocus : Qt.TabFocus
            onClicked: view.canceled()
        }
    }
}
