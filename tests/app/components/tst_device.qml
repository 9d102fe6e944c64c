import QtQuick
import QtTest

// How the pad is connected, as the chip, its pop-over, the hint and the drawn cable tell it.
StageCase {
    name: "Device"

    readonly property string usb: "Orlo3 · USB — ready to write"
    readonly property string wireless: "Orlo3 · wireless"
    readonly property string none: "No Orlo3 detected"
    readonly property string connected: "Tap a key — or its label — to select it, then assign from the library →"
    readonly property string offline: "Orlo3 not connected — you can still record and edit. Plug in USB only to write."

    function test_eachConnection_data() {
        return [
            { tag: "usb", chip: usb, explanation: "USB cable connected — Write to pad is ready.", hint: connected },
            { tag: "bluetooth", chip: wireless, explanation: "Connected over Bluetooth. Recording and editing work — plug in the USB cable to write.", hint: connected },
            { tag: "away", chip: none, explanation: "Nothing on USB or Bluetooth. You can still record and edit — connect the cable to write.", hint: offline }
        ];
    }
    function test_eachConnection(data) {
        Stage.enter("no-pad");
        Stage.connectPad(data.tag);
        verifyShown(data.chip);
        verifyShown(data.hint);
        verifyNotShown(data.explanation);
        click(data.chip);
        verifyShown(data.explanation);
        compare(Stage.description(control(data.chip)), data.explanation);
    }

    function test_itFollowsTheCable() {
        Stage.enter("no-pad");
        verifyShown(none);
        compare(Stage.count("PadCable"), 0, "no cable is drawn");
        Stage.connectPad("usb");
        verifyShown(usb);
        compare(Stage.count("PadCable"), 1);
        Stage.connectPad("bluetooth");
        verifyShown(wireless);
        compare(Stage.count("PadCable"), 0);
        Stage.connectPad("away");
        verifyShown(none);
    }

    function test_popoverClosesAgain_data() {
        return [
            { tag: "by its chip", act: () => click(usb) },
            { tag: "by Escape", act: () => Stage.key(Qt.Key_Escape) },
            { tag: "by a click beside it", act: () => Stage.click(part("KeycapView", 2)) }
        ];
    }
    function test_popoverClosesAgain(data) {
        Stage.enter("usb");
        click(usb);
        control("Refresh");
        data.act();
        compare(Stage.control("Refresh"), null);
    }
    function test_popoverByKeyboard() {
        Stage.enter("usb");
        tabTo(usb);
        Stage.key(Qt.Key_Return);
        compare(Stage.focused(), "Refresh");
        Stage.key(Qt.Key_Escape);
        compare(Stage.control("Refresh"), null);
        compare(Stage.focused(), usb);
    }

    // The watcher waits for the end of a burst of changes; this does not.
    function test_refreshLooksForDevices() {
        Stage.enter("no-pad");
        Stage.beginToConnectPad("usb");
        verifyShown(none);
        click(none);
        click("Refresh");
        verifyShown(usb);
    }
}
