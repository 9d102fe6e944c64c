import QtQuick
import QtQuick.Layouts
import QtQuick.Templates as T
import Trellivar

// What the selected key does, and what it could do instead.
ScrollPanel {
    id: panel

    signal pickerRequested

    readonly property bool isListening: App.mapping.isRecording || App.mapping.isLearning
    readonly property bool hasSelection: App.mapping.selectedKey > 0

    // Whoever began with the keyboard sees afterwards where the keyboard is.
    property int reason: Qt.OtherFocusReason

    onIsListeningChanged: {
        if (isListening) {
            reason = (focused as T.Control)?.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason;
            listening.listen();
        } else if (listening.activeFocus) {
            controls.forceActiveFocus(reason);
        }
    }

    ColumnLayout {
        width: panel.width
        height: Math.max(panel.height, implicitHeight)
        spacing: Theme.unit * 2

        SelectionTitle {
            Layout.fillWidth: true
            visible: panel.hasSelection
        }
        NoSelection {
            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: !panel.hasSelection
        }
        AssignControls {
            id: controls

            Layout.fillWidth: true
            visible: panel.hasSelection && !panel.isListening
            onPickerRequested: panel.pickerRequested()
        }
        ListeningView {
            id: listening

            Layout.fillWidth: true
            Layout.fillHeight: true
            visible: panel.isListening
            prompt: App.mapping.isRecording ? App.texts.recordingNow : App.texts.listening
            period: App.mapping.listeningMilliseconds
            isTabTaken: App.mapping.isRecording
            onCanceled: App.mapping.cancel()
        }
        Text {
            Layout.fillWidth: true
            visible: text.length > 0
            text: App.mapping.error
            color: Theme.error
            font.pixelSize: Theme.body
            wrapMode: Text.Wrap
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        Item {
            Layout.fillHeight: true
            visible: controls.visible
        }
    }
}
