import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// The window: the first steps or the pad, and the sheets over them.
ApplicationWindow {
    width: Theme.unit * 122
    height: Theme.unit * 82
    minimumWidth: Theme.minimumWidth
    minimumHeight: Theme.minimumHeight
    visible: true
    title: "Trellivar"
    color: Theme.window

    // As the menu of the status area has it, which not every desktop shows. It belongs to what listens
    // for keys while anything does.
    Shortcut {
        readonly property bool isListening: App.mapping.isRecording || App.mapping.isLearning || (App.discovery?.isCapturing ?? false)

        sequence: "Ctrl+Q"
        context: Qt.ApplicationShortcut // a sheet keeps those of the window from working
        enabled: !isListening && !picker.visible
        onActivated: Qt.quit()
    }
    Loader {
        anchors.fill: parent
        active: App.isOnboarding
        focus: active
        sourceComponent: OnboardingScreen {}
    }
    MappingScreen {
        anchors.fill: parent
        visible: !App.isOnboarding
        focus: visible
        onSettingsRequested: settings.open()
        onPickerRequested: picker.open()
    }
    SettingsSheet {
        id: settings
    }
    KeyboardPickerSheet {
        id: picker
    }
    DiscoverySheet {
        visible: App.discovery !== null
    }
}
