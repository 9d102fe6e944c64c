import QtQuick
import QtTest

// The panel that writes into the pad.
StageCase {
    name: "Writing"

    readonly property string helper: "Writes every mode (P/M/R) in one go — USB cable needed. The bindings then work over Bluetooth; over the cable itself the pad keeps its factory keys."
    readonly property string needPad: "Plug in / reconnect the Orlo3 via USB (replug if unresponsive)"

    function test_eachState_data() {
        return [
            { tag: "usb", state: "idle", text: "" },
            { tag: "written", state: "done", text: "Written P, M, R (firmware 1.0.7)", lines: ["P ✓", "M ✓", "R ✓"] },
            { tag: "partly-skipped", state: "done", text: "Written P, M, R (firmware 1.0.7)", lines: ["P — keys 2, 3 skipped (no firmware equivalent)", "M ✓", "R ✓"] },
            { tag: "need-pad", state: "needPad", text: needPad },
            { tag: "write-error", state: "error", text: "Pad stopped responding mid-write — reconnect (replug) the Orlo3 and try again." },
            { tag: "nothing-to-write", state: "error", text: "Nothing to write yet — record a key first." }
        ];
    }
    function test_eachState(data) {
        Stage.enter(data.tag);
        compare(Stage.app.write.state, data.state);
        control("Write to pad");
        verifyShown(helper);
        verifyNotShown("Writing…");
        for (const text of [data.text, ...(data.lines ?? [])])
            verify(text === "" || Stage.shows(text), text + " among " + Stage.texts().join("|"));
        compare(Stage.app.write.lines.length, (data.lines ?? []).length);
    }
    function test_whileWritingTheButtonIsALineOfProgress() {
        Stage.enter("writing");
        verifyShown("Writing…");
        compare(Stage.control("Write to pad"), null);
        compare(Stage.count("ProgressLine"), 1);
        Stage.finishWriting();
        verifyNotShown("Writing…");
        compare(Stage.count("ProgressLine"), 0);
        control("Write to pad");
        verifyShown("M ✓");
    }
    function test_itWritesWhatIsBoundInEveryMode() {
        Stage.enter("usb");
        click("R");
        Stage.click(part("KeycapView", 1));
        click("Record custom");
        Stage.strike(["left_command", "z"]);
        compare(Stage.stored("R", 2), "⌘ Z");
        click("Write to pad");
        Stage.finishWriting();
        compare(Stage.written().join(), "P1,R2", "the firmware has no keys for the volume");
    }
    function test_byKeyboard() {
        Stage.enter("usb");
        tabTo("Write to pad");
        Stage.key(Qt.Key_Return);
        verifyShown("Writing…");
        Stage.finishWriting();
        compare(Stage.app.write.state, "done");
    }
    function test_theCallForThePadEndsWhenItIsBack() {
        Stage.enter("need-pad");
        verifyShown(needPad);
        Stage.connectPad("usb");
        verifyNotShown(needPad);
        compare(Stage.app.write.state, "idle");
    }
    function test_aSecondWriteTakesThePlaceOfTheFirst() {
        Stage.enter("write-error");
        Stage.connectPad("away");
        click("Write to pad");
        Stage.finishWriting();
        verifyShown(needPad);
        verifyNotShown("Pad stopped responding mid-write — reconnect (replug) the Orlo3 and try again.");
    }
}
