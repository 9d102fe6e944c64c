import QtQuick
import QtQuick.Layouts
import Trellivar

// What the system permits the application.
RowLayout {
    ToggleSwitch {
        text: "Accessibility"
        checked: Desk.isAccessibilityGranted
        onToggled: Desk.setAccessibilityGranted(checked)
    }
    Item {
        Layout.fillWidth: true
    }
    ToggleSwitch {
        text: "Input Monitoring"
        checked: Desk.isInputMonitoringGranted
        onToggled: Desk.setInputMonitoringGranted(checked)
    }
}
