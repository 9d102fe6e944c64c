import QtQuick
import QtTest

// Ctrl+Q, as the menu of the status area has it.
StageCase {
    name: "Quitting"

    // On the stage, nobody hears that the application is to quit.
    function quits(): bool {
        Stage.forgetWarnings();
        Stage.key(Qt.Key_Q, Qt.ControlModifier);
        const heard = Stage.warnings.join();
        Stage.forgetWarnings();
        verify(heard === "" || heard.includes("QQmlEngine::quit()"), heard);
        return heard !== "";
    }

    function test_everyScreen_data() {
        const listening = ["recording", "learning", "discovery-listening", "discovery-second-key", "picker", "picker-composed"];
        return Stage.scenes().map(name => ({ tag: name, quits: !listening.includes(name) }));
    }
    function test_everyScreen(data) {
        Stage.enter(data.tag);
        compare(quits(), data.quits);
    }
    function test_itQuitsAgainWhenNothingIsListenedTo_data() {
        return [{ tag: "recording", end: () => click("Cancel") }, { tag: "learning", end: () => click("Cancel") },
            { tag: "discovery-listening", end: () => click("Close") }, { tag: "picker", end: () => click("Close") }];
    }
    function test_itQuitsAgainWhenNothingIsListenedTo(data) {
        Stage.enter(data.tag);
        data.end();
        verify(quits());
    }
    function test_inThePickerItIsTyped() {
        Stage.enter("picker");
        verify(!quits());
        verify(Stage.isChecked(control("q")));
    }
}
