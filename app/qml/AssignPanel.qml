import QtQuick
import QtQuick.Layouts
import Trellivar

// What the selected key does, and what it could do instead.
Item {
    id: panel

    signal pickerRequested

    readonly property bool isListening: App.mapping.isRecording || App.mapping.isLearning
    readonly property bool hasSelection: App.mapping.selectedKey > 0

    onIsListeningChanged: {
        if (isListening)
            listening.listen();
        else if (listening.activeFocus)
            controls.forceActiveFocus(Qt.OtherFocusReason);
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Theme.unit * 2

        ColumnLayout {
            Layout.fillWidth: true
            visible: panel.hasSelection
            spacing: Theme.unit

            Text {
                Layout.fillWidth: true
                text: App.mapping.title
                color: Theme.quietText
                font.pixelSize: Theme.body
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                Layout.fillWidth: true
                text: App.mapping.legend || App.texts.empty
                color: App.mapping.legend ? Theme.text : Theme.quietText
                font.pixelSize: Theme.large
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                maximumLineCount: 2
                elide: Text.ElideRight
            }
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
            font.pixelSize: Theme.small
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
