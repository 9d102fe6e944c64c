import QtQuick
import QtTest

// What keeps the pad from working is told where the pad is drawn.
StageCase {
    name: "Notes"

    function notesShown() {
        return Stage.alerts().filter(text => text !== "").map(text => text.split("\n")[0]);
    }

    function test_aPermissionThatWasTakenBackIsToldUntilItIsThereAgain_data() {
        return [
            { tag: "lost-accessibility", title: "Grant Accessibility", action: "Open Accessibility settings", call: "settings: accessibility" },
            { tag: "lost-input-monitoring", title: "Grant Input Monitoring", action: "Open Input Monitoring settings", call: "settings: input monitoring" }
        ];
    }
    function test_aPermissionThatWasTakenBackIsToldUntilItIsThereAgain(data) {
        Stage.enter(data.tag);
        verifyShown(data.title);
        compare(notesShown(), [data.title]);
        click(data.action);
        compare(Stage.calls[Stage.calls.length - 1], data.call);
        Stage.permit(true, true);
        verifyNotShown(data.title);
        compare(Stage.control(data.action), null);
    }

    function test_withoutAnEngineTheScreenSaysSo() {
        Stage.enter("no-engine");
        verifyShown("Keys can't be remapped on this computer");
        compare(notesShown(), ["Keys can't be remapped on this computer"]);
        Stage.setLanguage("zh-Hans");
        verifyShown("这台电脑无法重映射按键");
    }
    function test_aModeCanBeDiscoveredBesideAnyProblem() {
        const undiscovered = "Mode M hasn't been discovered yet";
        Stage.enter("undiscovered");
        Stage.permit(true, false);
        compare(notesShown(), ["Grant Input Monitoring", undiscovered]);
        Stage.permit(false, true);
        compare(notesShown(), ["Grant Accessibility", undiscovered]);
        Stage.reportOfFile("profiles.json: No space left on device");
        compare(notesShown(), ["A file could not be read or written", undiscovered]);
        click("Discover this mode");
        verifyShown("Discover Mode M");
    }
    function test_whereThereIsNoRoomForTwoOneIsBrief() {
        Stage.enter("two-notes");
        const file = "the profiles cannot be read: /Users/lin/Library/Application Support/Trellivar/profiles.json:12:5: expected ',' or '}'; the file counts as empty and is kept as /Users/lin/Library/Application Support/Trellivar/profiles.json.unreadable";
        const engine = "There is no engine for this system. You can still edit and write to the pad over USB; start with --simulate to try everything on a simulated desk.";
        const mode = Stage.text("undiscoveredDetail");
        const hint = Stage.app.devices.stageHint;
        Stage.resize(976, 720);
        [file, mode, hint].forEach(verifyShown);
        Stage.resize(880, 600);
        verifyShown(file);
        [mode, hint].forEach(verifyNotShown);
        click("Close");
        compare(notesShown(), ["Keys can't be remapped on this computer", "Mode M hasn't been discovered yet"]);
        verifyShown(mode);
        [engine, hint].forEach(verifyNotShown);
        Stage.resize(976, 720);
        [engine, mode, hint].forEach(verifyShown);
    }
    function test_nothingThatIsToldIsLostToWhatComesLater() {
        Stage.enter("usb");
        const first = "profiles.json:12:5: expected ','";
        const second = "profiles.json: No space left on device";
        [first, second, first].forEach(what => Stage.reportOfFile(what));
        verifyShown(first);
        verifyNotShown(second);
        compare(Stage.alerts(), ["A file could not be read or written\n" + first]);
        click("Close");
        verifyShown(second);
        verifyNotShown(first);
        compare(Stage.alerts(), ["A file could not be read or written\n" + second]);
        click("Close");
        compare(notesShown(), []);
    }
    function test_aKeyThatIsHeldDownNotesOneTroubleOnly_data() {
        return [
            { tag: "return", key: Qt.Key_Return },
            { tag: "enter", key: Qt.Key_Enter },
            { tag: "space", key: Qt.Key_Space }
        ];
    }
    function test_aKeyThatIsHeldDownNotesOneTroubleOnly(data) {
        Stage.enter("usb");
        for (const what of ["one", "two", "three"])
            Stage.reportOfFile(what);
        tabTo("Close");
        Stage.keyDown(data.key);
        Stage.keyRepeats(data.key);
        Stage.keyRepeats(data.key);
        Stage.keyUp(data.key);
        verifyShown("two");
    }
    function test_spaceThatIsStillHeldPressesNothingThatComes() {
        Stage.enter("undiscovered");
        tabTo("Discover this mode");
        Stage.key(Qt.Key_Return);
        compare(Stage.focused(), "Check connection");
        Stage.keyRepeats(Qt.Key_Space);
        Stage.keyUp(Qt.Key_Space);
        compare(Stage.focused(), "Check connection", "it was not pressed");
        Stage.key(Qt.Key_Space);
        verify(Stage.focused() !== "Check connection", "it can be");
    }
    function test_theKeyboardGoesOnWhenANoteGoes() {
        Stage.enter("two-notes");
        tabTo("Close");
        Stage.key(Qt.Key_Return);
        compare(Stage.focused(), "Discover this mode");
        Stage.enter("unreadable-file");
        tabTo("Close");
        Stage.key(Qt.Key_Space);
        compare(Stage.focused(), "Record custom");
    }
    function test_theKeyboardDoesNotComeBackToANoteThatWentMeanwhile() {
        Stage.enter("lost-accessibility");
        tabTo("Open Accessibility settings");
        Stage.key(Qt.Key_Space);
        const calls = Stage.calls.length;
        Stage.turnAway();
        Stage.permit(true, true);
        Stage.turnBack();
        Stage.key(Qt.Key_Return);
        Stage.key(Qt.Key_Space);
        compare(Stage.calls.length, calls, "nothing was asked again");
        Stage.key(Qt.Key_Tab);
        verify(Stage.focused() !== "", "and Tab goes on");
        verify(Stage.focused() !== "Open Accessibility settings");
    }
    function test_aButtonKeepsItsMeaningWhenAnotherNoteComes() {
        Stage.enter("undiscovered");
        tabTo("Discover this mode");
        Stage.reportOfFile("profiles.json: No space left on device");
        compare(Stage.focused(), "Discover this mode");
        Stage.key(Qt.Key_Return);
        verifyShown("Discover Mode M");
    }

    function test_whatIsWrongWithAFileIsToldUntilItIsNoted() {
        Stage.enter("usb");
        Stage.reportOfFile("profiles.json: No space left on device");
        verifyShown("A file could not be read or written");
        verifyShown("profiles.json: No space left on device");
        Stage.setLanguage("zh-Hans");
        verifyShown("有文件无法读取或写入");
        verifyShown("profiles.json: No space left on device");
        click("关闭");
        compare(notesShown(), []);
        Stage.reportOfFile("profiles.json: No space left on device");
        verifyShown("有文件无法读取或写入");
    }

    function test_theFirstStepsShowNotesToo() {
        Stage.enter("onboarding-no-engine");
        compare(notesShown(), ["Keys can't be remapped on this computer"]);
        Stage.reportOfFile("profiles.json: No space left on device");
        click("Close");
        compare(notesShown(), ["Keys can't be remapped on this computer"]);
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
        compare(notesShown(), []);
    }
}
