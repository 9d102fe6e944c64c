import QtQuick
import QtTest

// The pills P, M and R: each shows the profile of its mode.
StageCase {
    name: "Modes"

    function active(): string {
        return ["P", "M", "R"].filter(mode => Stage.isChecked(control(mode))).join();
    }

    function test_choosingAModeShowsItsProfile_data() {
        return [{ tag: "M" }, { tag: "R" }];
    }
    function test_choosingAModeShowsItsProfile(data) {
        Stage.enter("usb");
        compare(active(), "P");
        verifyShown("Copy");
        click(data.tag);
        compare(active(), data.tag);
        compare(Stage.app.mapping.activeMode, data.tag);
        verifyNotShown("Copy");
        click("P");
        compare(active(), "P");
        verifyShown("Copy");
    }
    function test_choosingTheActiveModeChangesNothing() {
        Stage.enter("usb");
        click("P");
        compare(active(), "P");
        verifyShown("Copy");
    }
    function test_byKeyboard() {
        Stage.enter("usb");
        tabTo("P");
        Stage.key(Qt.Key_Right);
        compare(Stage.focused(), "M");
        Stage.key(Qt.Key_Space);
        compare(active(), "M");
        Stage.key(Qt.Key_Right);
        Stage.key(Qt.Key_Return);
        compare(active(), "R");
        Stage.key(Qt.Key_Left);
        compare(Stage.focused(), "M");
    }
    function test_aSelectionEndsWithItsMode() {
        Stage.enter("selected");
        compare(Stage.app.mapping.selectedKey, 1);
        click("M");
        compare(Stage.app.mapping.selectedKey, 0);
        verifyShown("No key selected");
    }
    function test_theSwitchOfThePadDoesNotChooseForTheUser() {
        Stage.enter("usb");
        Stage.turnTo("R");
        compare(active(), "P");
        compare(part("DeviceBodyView", 0).mode, "R", "the drawn switch is that of the pad");
        Stage.connectPad("away");
        compare(part("DeviceBodyView", 0).mode, "P", "or that of the pill");
    }
}
