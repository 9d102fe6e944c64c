import QtQuick
import QtTest

// Motion is short, and off where people asked for none.
StageCase {
    name: "Motion"

    function openThePad(reduced: bool) {
        Stage.setMotionReduced(reduced);
        Stage.open();
        Stage.goOn();
        Stage.connectPad("usb");
        Stage.pass(1);
    }

    function test_aSheetFadesInWithinTwoTenths() {
        openThePad(false);
        click("SETTINGS");
        Stage.pass(0.05);
        const sheet = control("Close");
        verify(Stage.opacityOf(sheet) < 1);
        Stage.pass(0.15);
        compare(Stage.opacityOf(sheet), 1);
    }
    function test_withoutMotionASheetIsThereAtOnce() {
        openThePad(true);
        click("SETTINGS");
        compare(Stage.opacityOf(control("Close")), 1);
    }
    function test_theWishForLessMotionIsHeardWhileItRuns() {
        openThePad(false);
        Stage.setMotionReduced(true);
        click("SETTINGS");
        compare(Stage.opacityOf(control("Close")), 1);
    }
    function test_withoutMotionNothingMovesByItself_data() {
        return Stage.scenes().map(name => ({ tag: name }));
    }
    function test_withoutMotionNothingMovesByItself(data) {
        Stage.enter(data.tag);
        Stage.movesIn(0); // the first frame may still settle
        verify(!Stage.movesIn(0.3), "the picture is the same a little later");
    }
}
