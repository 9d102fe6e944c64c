import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// The window: the first steps or the pad, and the sheets over them.
ApplicationWindow {
    id: window

    width: Theme.unit * 122
    height: Theme.unit * 82
    minimumWidth: 880
    minimumHeight: 600
    visible: true
    title: "Trellivar"
    color: Theme.window

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
    Connections {
        target: App

        function onDiscoveryChanged() {
            discovery.visible = App.discovery !== null;
        }
    }
    SettingsSheet {
        id: settings
    }
    KeyboardPickerSheet {
        id: picker
    }
    DiscoverySheet {
        id: discovery
    }
}
