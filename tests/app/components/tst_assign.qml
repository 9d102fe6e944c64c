import QtQuick
import QtTest

// The panel beside the pad: what the selected key does, and what it could do instead.
StageCase {
    name: "Assign"

    readonly property var library: ["Volume Up", "Volume Down", "Mute", "Play / Pause", "Button 1", "Button 2", "Button 3"]

    // The choice in the library, since pills have the same names.
    function choice(name: string): Item {
        for (let i = 0; i < Stage.count("LibraryItem"); ++i) {
            if (Stage.name(part("LibraryItem", i)) === name)
                return part("LibraryItem", i);
        }
        fail(name + " is not in the library");
    }

    function test_theTitleNamesTheKey_data() {
        return [
            { tag: "selected", title: "Key 1 — Copy", legend: "⌘ C" },
            { tag: "selected-from-library", title: "Key 2 — Volume Up", legend: "Volume Up" },
            { tag: "selected-empty", title: "Key 3", legend: "Empty" }
        ];
    }
    function test_theTitleNamesTheKey(data) {
        Stage.enter(data.tag);
        verifyShown(data.title);
        verifyShown(data.legend);
        control("Record custom");
        control("Choose on keyboard…");
    }

    function test_everyLibraryChoiceIsAssignedAndStored_data() {
        return library.map(name => ({ tag: name }));
    }
    function test_everyLibraryChoiceIsAssignedAndStored(data) {
        Stage.enter("selected-empty");
        compare(Stage.count("LibraryItem"), library.length);
        Stage.click(choice(data.tag));
        compare(Stage.stored("P", 3), data.tag);
        verifyShown("Key 3 — " + data.tag);
        compare(library.filter(name => Stage.isChecked(choice(name))).join(), data.tag);
    }
    function test_theLibraryByKeyboard() {
        Stage.enter("selected-empty");
        tabTo("Choose on keyboard…");
        Stage.key(Qt.Key_Tab);
        compare(Stage.focused(), "Volume Up");
        Stage.key(Qt.Key_Return);
        compare(Stage.stored("P", 3), "Volume Up");
    }
    function test_anotherChoiceTakesThePlaceOfTheFirst() {
        Stage.enter("selected-from-library");
        verify(Stage.isChecked(choice("Volume Up")));
        Stage.click(choice("Mute"));
        verify(!Stage.isChecked(choice("Volume Up")));
        compare(Stage.stored("P", 2), "Mute");
        compare(Stage.stored("P", 1), "⌘ C: Copy", "other keys keep theirs");
    }

    function test_recordingBindsWhatIsStruck() {
        Stage.enter("selected-empty");
        click("Record custom");
        verifyShown("Press your shortcut now…");
        compare(Stage.control("Record custom"), null);
        compare(Stage.count("LibraryItem"), 0);
        compare(Stage.count("TimeRing"), 1);
        Stage.strike(["left_command", "left_shift", "k"]);
        verifyNotShown("Press your shortcut now…");
        compare(Stage.stored("P", 3), "⌘ ⇧ K");
        verifyShown("Key 3 — ⌘ ⇧ K");
    }
    function test_recordingCanBeCancelled() {
        Stage.enter("recording");
        click("Cancel");
        verify(!Stage.app.mapping.isRecording);
        control("Record custom");
        Stage.strike(["left_command", "k"]);
        compare(Stage.stored("P", 3), "");
        compare(Stage.app.mapping.error, "");
    }
    function test_whatIsTypedMeanwhileBelongsToTheShortcut_data() {
        return [{ tag: "Escape", key: Qt.Key_Escape }, { tag: "Tab", key: Qt.Key_Tab },
            { tag: "Space", key: Qt.Key_Space }, { tag: "Return", key: Qt.Key_Return }];
    }
    function test_whatIsTypedMeanwhileBelongsToTheShortcut(data) {
        Stage.enter("selected-empty");
        click("Record custom");
        const before = Stage.window.activeFocusItem;
        Stage.key(data.key);
        verify(Stage.app.mapping.isRecording);
        compare(Stage.window.activeFocusItem, before);
        compare(Stage.app.mapping.selectedKey, 3);
    }
    function test_recordingThatHearsNothingSaysSo() {
        Stage.enter("error");
        verifyShown("Didn't catch a shortcut — press the keys you want, then release.");
        control("Record custom");
        click("Record custom");
        verifyNotShown("Didn't catch a shortcut — press the keys you want, then release.");
    }
    function test_anErrorIsAnAlert() {
        Stage.enter("error");
        compare(Stage.alerts().join(), "Didn't catch a shortcut — press the keys you want, then release.");
    }

    function test_anUnlearnedKeyOffersToBeLearned() {
        Stage.enter("unlearned");
        verifyShown("Learn this key first.");
        compare(Stage.count("LibraryItem"), 0);
        click("Capture Key 2");
        verifyShown("Listening…");
        verify(Stage.app.mapping.isLearning);
        Stage.pass(0.5);
        Stage.press(2);
        verify(!Stage.app.mapping.isLearning);
        compare(Stage.learned(2), "left_option 2");
        compare(Stage.count("LibraryItem"), library.length);
        verifyNotShown("Learn this key first.");
        compare(Stage.control("Capture Key 2"), null);
    }
    function test_learningByKeyboardLeadsToWhatTheKeyCanBeGiven() {
        Stage.enter("unlearned");
        tabTo("Capture Key 2");
        Stage.key(Qt.Key_Return);
        verify(Stage.app.mapping.isLearning);
        Stage.pass(0.5);
        Stage.press(2);
        compare(Stage.learned(2), "left_option 2");
        compare(Stage.focused(), "Record custom");
        verify(control("Record custom").visualFocus);
    }
    function test_learningThatIsCancelledByKeyboardCanBeTriedAgain() {
        Stage.enter("unlearned");
        tabTo("Capture Key 2");
        Stage.key(Qt.Key_Return);
        tabTo("Cancel");
        Stage.key(Qt.Key_Return);
        verify(!Stage.app.mapping.isLearning);
        compare(Stage.focused(), "Capture Key 2");
        verify(control("Capture Key 2").visualFocus);
    }
    function test_learningCanBeCancelled() {
        Stage.enter("learning");
        click("Cancel");
        verify(!Stage.app.mapping.isLearning);
        control("Capture Key 2");
        Stage.press(2);
        compare(Stage.learned(2), "");
    }
    function listenTo(key: int, mode: string, action: string) {
        Stage.setMotionReduced(false);
        Stage.open();
        Stage.goOn();
        Stage.turnTo(mode);
        Stage.connectPad("bluetooth");
        click(mode);
        Stage.click(part("KeycapView", key - 1));
        Stage.pass(1);
        click(action);
    }
    function test_theRingShowsTheTimeThatIsLeft_data() {
        return [
            { tag: "recording", mode: "P", action: "Record custom", seconds: 8 },
            { tag: "learning", mode: "M", action: "Capture Key 2", seconds: 12 }
        ];
    }
    function test_theRingShowsTheTimeThatIsLeft(data) {
        listenTo(2, data.mode, data.action);
        Stage.pass(data.seconds / 4);
        fuzzyCompare(part("TimeRing", 0).remaining, 0.75, 0.02);
        Stage.pass(data.seconds / 2);
        fuzzyCompare(part("TimeRing", 0).remaining, 0.25, 0.02);
    }
    function test_selectingAnotherKeyChangesThePanel() {
        Stage.enter("selected");
        Stage.click(part("KeycapView", 2));
        verifyShown("Key 3");
        verifyNotShown("Key 1 — Copy");
    }
}
