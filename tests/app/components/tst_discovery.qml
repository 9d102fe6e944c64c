import QtQuick
import QtTest

// A mode that nobody knows: the note about it, and the sheet that teaches it.
StageCase {
    name: "Discovery"

    readonly property string note: "Mode M hasn't been discovered yet"

    function isOpen(): bool {
        return Stage.shows("Discover Mode M");
    }

    function test_theNoteIsShownForAModeThatIsNotKnown() {
        Stage.enter("undiscovered");
        verifyShown(note);
        verifyShown("You can still assign keys and write them over USB — these bindings live on the pad. Discovery only adds in-app key normalization for this mode.");
        control("Discover this mode");
        click("P");
        verifyNotShown(note);
        compare(Stage.control("Discover this mode"), null);
    }

    // The note of the screen behind the sheet is none of the sheet's errors.
    function errors(): var {
        return Stage.alerts().filter(text => text !== "" && !text.startsWith("Mode M hasn't been discovered yet\n"));
    }

    function test_eachStep_data() {
        return [
            { tag: "discovery-switch", title: "Flip the switch to M", detail: "Slide the Orlo3's P/M/R switch to M, then confirm it's connected.", action: "Check connection", error: "" },
            { tag: "discovery-not-seen", title: "Flip the switch to M", detail: "Slide the Orlo3's P/M/R switch to M, then confirm it's connected.", action: "Check connection", error: "Couldn't see the pad in M mode — flip the switch to M and try again." },
            { tag: "discovery-listening", title: "Press Key 1 on your Orlo3", detail: "Press and release Key 1.", action: "", error: "" },
            { tag: "discovery-second-key", title: "Press Key 2 on your Orlo3", detail: "Press and release Key 2.", action: "", error: "" },
            { tag: "discovery-missed", title: "Press Key 2 on your Orlo3", detail: "Press and release Key 2.", action: "Capture Key 2", error: "Didn't catch that key — press it again." },
            { tag: "discovery-review", title: "Captured", detail: "", action: "Save Mode M", error: "" },
            { tag: "discovery-done", title: "Mode M discovered.", detail: "", action: "Done", error: "" }
        ];
    }
    function test_eachStep(data) {
        Stage.enter(data.tag);
        verifyShown("Discover Mode M");
        verifyShown(data.title);
        if (data.detail)
            verifyShown(data.detail);
        compare(Stage.shows("Listening…"), data.action === "");
        for (const action of ["Check connection", "Capture Key 2", "Save Mode M", "Done"])
            compare(Stage.control(action) !== null, action === data.action, action);
        compare(errors().join(), data.error);
        control("Close");
    }

    function test_capturedKeysTickOff() {
        Stage.enter("discovery-listening");
        verify(!Stage.texts().some(text => text.includes("✓")));
        Stage.press(1);
        verify(Stage.texts().some(text => text.includes("Key 1 — ⌥ 1")), Stage.texts().join("|"));
        verify(!Stage.texts().some(text => text.includes("Key 2 —")));
        Stage.press(2);
        Stage.press(3);
        for (const text of ["Key 1 — ⌥ 1", "Key 2 — ⌥ 2", "Key 3 — ⌥ 3"])
            verify(Stage.texts().some(each => each.includes(text)), text);
    }
    function test_whatThePadTypesWorksNothingElse_data() {
        return [{ tag: "Escape", key: Qt.Key_Escape }, { tag: "Tab", key: Qt.Key_Tab }, { tag: "Return", key: Qt.Key_Return }, { tag: "Space", key: Qt.Key_Space }];
    }
    function test_whatThePadTypesWorksNothingElse(data) {
        Stage.enter("discovery-second-key");
        Stage.key(data.key);
        verify(isOpen());
        verifyShown("Listening…");
        compare(Stage.focused(), "Listening…");
        Stage.press(2);
        Stage.key(data.key); // which the pad may repeat
        Stage.press(3);
        compare(Stage.focused(), "Save Mode M");
    }
    function test_escapeClosesTheSheetWhileNothingIsListenedTo() {
        Stage.enter("discovery-missed");
        Stage.key(Qt.Key_Escape);
        verify(!isOpen());
    }
    function test_fromTheNoteToTheKnownModeByKeyboard() {
        Stage.enter("undiscovered");
        tabTo("Discover this mode");
        Stage.key(Qt.Key_Return);
        compare(Stage.focused(), "Check connection");
        Stage.key(Qt.Key_Return);
        for (const key of [1, 2, 3])
            Stage.press(key);
        compare(Stage.learned(1), "", "nothing is stored before it is saved");
        compare(Stage.focused(), "Save Mode M");
        Stage.key(Qt.Key_Return);
        compare(Stage.learned(1), "left_option 1");
        compare(Stage.learned(3), "left_option 3");
        compare(Stage.focused(), "Done");
        Stage.key(Qt.Key_Return);
        verify(!isOpen());
        verifyNotShown(note);
        compare(Stage.focused(), "Write to pad");
    }
    function test_aModeThatADeviceOfAnotherKindTaughtIsKnown() {
        Stage.enter("undiscovered");
        Stage.connectPad("away");
        click("Discover this mode");
        click("Check connection");
        for (const key of ["a", "b", "c"])
            Stage.strike([key]);
        click("Save Mode M");
        click("Done");
        compare(Stage.learned(1), "a");
        verifyNotShown(note);
    }
    function test_discoveryThatRunsIsNotReplaced() {
        Stage.enter("discovery-second-key");
        Stage.app.openDiscovery();
        verifyShown("Press Key 2 on your Orlo3");
    }
    function test_aMissedKeyIsListenedForAgain() {
        Stage.enter("discovery-missed");
        click("Capture Key 2");
        verifyShown("Listening…");
        verifyNotShown("Didn't catch that key — press it again.");
        Stage.press(2);
        verifyShown("Press Key 3 on your Orlo3");
    }
    function test_aPadThatWasNotSeenIsFoundAtTheNextCheck() {
        Stage.enter("discovery-not-seen");
        Stage.connectPad("bluetooth");
        click("Check connection");
        verifyShown("Press Key 1 on your Orlo3");
        compare(errors().join(), "");
    }
    function test_theKeyboardReturnsToTheNote() {
        Stage.enter("undiscovered");
        tabTo("Discover this mode");
        Stage.key(Qt.Key_Return);
        Stage.key(Qt.Key_Escape);
        verify(!isOpen());
        compare(Stage.focused(), "Discover this mode");
    }
    function test_closingLeavesEverythingAsItWas_data() {
        return [{ tag: "Close", act: () => click("Close") }, { tag: "Escape", act: () => Stage.key(Qt.Key_Escape) }];
    }
    function test_closingLeavesEverythingAsItWas(data) {
        Stage.enter("discovery-review");
        data.act();
        verify(!isOpen());
        compare(Stage.app.discovery, null);
        compare(Stage.learned(1), "");
        verifyShown(note);
        click("Discover this mode");
        verifyShown("Flip the switch to M");
    }
}
