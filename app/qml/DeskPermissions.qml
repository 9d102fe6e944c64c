import QtQuick
import QtQuick.Layouts
import Trellivar

// What the system permits the application.
RowLayout {
    ToggleSwitch {
        text: "Accessibility"
        checked: Desk.isAccessibilityGranted
        Accessible.name: text
        onToggled: Desk.setAccessibilityGranted(checked)
    }
    Item {
        Layout.fillWidth: true
    }
    ToggleSwitch {
        text: "Input Monitoring"
        checked: Desk.isInputMonitoringGranted
        Accessible.name: text
        onToggled: Desk.setInputMonitoringGranted(checked)
    }
}
