import QtQuick
import QtTest

// Assistive technology works the controls without mouse and keyboard.
StageCase {
    name: "Assistance"

    // What the controls are good for, and how it is seen that they were worked.
    function test_eachKindOfControl_data() {
        const press = [
            { tag: "ActionButton", scene: "usb", control: "Write to pad", isDone: () => Stage.shows("Writing…") },
            { tag: "ActionPill", scene: "usb", control: "Copy", isDone: () => Stage.app.mapping.selectedKey === 1 },
            { tag: "DeviceChip", scene: "usb", control: "Orlo3 · USB — ready to write", isDone: () => Stage.control("Refresh") !== null },
            { tag: "KeycapView", scene: "usb", control: "3 Empty", isDone: () => Stage.app.mapping.selectedKey === 3 },
            { tag: "SettingsButton", scene: "usb", control: "SETTINGS", isDone: () => Stage.shows("Appearance") }
        ];
        const choose = [
            { tag: "LibraryItem", scene: "selected-empty", control: "Mute", isDone: () => Stage.stored("P", 3) === "Mute" },
            { tag: "ModeSegment", scene: "usb", control: "R", isDone: () => Stage.app.mapping.activeMode === "R" },
            { tag: "PickerKey", scene: "picker", control: "k", isDone: () => Stage.app.picker.preview === "K" },
            { tag: "Segment", scene: "settings", control: "简体中文", isDone: () => Stage.shows("外观") },
            { tag: "ToggleSwitch", scene: "settings", control: "Start at login", isDone: () => Stage.calls[Stage.calls.length - 1] === "login off" }
        ];
        const rows = press.map(row => Object.assign({ action: "Press" }, row));
        for (const row of choose) {
            for (const action of ["Press", "Toggle"])
                rows.push(Object.assign({}, row, { tag: row.tag + ": " + action, action: action }));
        }
        return rows;
    }
    function test_eachKindOfControl(data) {
        Stage.enter(data.scene);
        verify(!data.isDone());
        Stage.assist(control(data.control), data.action);
        verify(data.isDone());
    }
    function test_whatIsDisabledIsNotWorked() {
        Stage.enter("picker");
        Stage.assist(control("Assign to Key 3"), "Press");
        verifyShown("Compose a shortcut");
    }
}
