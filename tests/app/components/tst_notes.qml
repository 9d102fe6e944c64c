import QtQuick
import QtTest

// What keeps the pad from working is told where the pad is drawn.
StageCase {
    name: "Notes"

    function test_aPermissionThatWasTakenBackIsToldUntilItIsThereAgain_data() {
        return [
            { tag: "lost-accessibility", title: "Grant Accessibility", action: "Open Accessibility settings", call: "settings: accessibility" },
            { tag: "lost-input-monitoring", title: "Grant Input Monitoring", action: "Open Input Monitoring settings", call: "settings: input monitoring" }
        ];
    }
    function test_aPermissionThatWasTakenBackIsToldUntilItIsThereAgain(data) {
        Stage.enter(data.tag);
        verifyShown(data.title);
        verify(Stage.alerts().includes(data.title));
        click(data.action);
        compare(Stage.calls[Stage.calls.length - 1], data.call);
        Stage.permit(true, true);
        verifyNotShown(data.title);
        compare(Stage.control(data.action), null);
    }

    function test_withoutAnEngineTheScreenSaysSo() {
        Stage.enter("no-engine");
        verifyShown("Keys can't be remapped on this computer");
        verify(Stage.alerts().includes("Keys can't be remapped on this computer"));
        Stage.setLanguage("zh-Hans");
        verifyShown("这台电脑无法重映射按键");
    }
    function test_withoutAnEngineThePadCanBeWritten() {
        Stage.enter("no-engine");
        click("Write to pad");
        Stage.finishWriting();
        compare(Stage.app.write.state, "done");
        compare(Stage.written().join(), "P1", "the firmware has no keys for the volume");
    }
    function test_thereIsNoNoteWhileAllIsWell() {
        Stage.enter("usb");
        compare(Stage.alerts().filter(text => text !== "").join(), "");
    }
}
