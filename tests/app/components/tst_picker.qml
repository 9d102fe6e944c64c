import QtQuick
import QtTest

// The sheet on which a shortcut is composed.
StageCase {
    name: "Picker"

    readonly property var symbols: ({ "left control": "⌃", "left option": "⌥", "left command": "⌘" })

    function isOpen(): bool {
        return Stage.shows("Compose a shortcut");
    }

    function test_itBeginsEmpty() {
        Stage.enter("picker");
        verify(isOpen());
        verifyShown("Click keys below");
        verify(!control("Assign to Key 3").enabled);
        compare(Stage.focused(), "escape", "the first key has the keyboard");
    }
    function test_modifiersLatchAndTheBaseKeyIsOne() {
        Stage.enter("picker");
        click("left command");
        verifyShown("⌘");
        verify(Stage.isChecked(control("left command")));
        click("left shift");
        click("k");
        verifyShown("⌘ ⇧ K");
        click("j");
        verifyShown("⌘ ⇧ J");
        verify(!Stage.isChecked(control("k")));
        verify(Stage.isChecked(control("j")));
        click("left command");
        verifyShown("⇧ J");
        click("j");
        verifyShown("⇧ J");
        Stage.doubleClick(control("k"));
        verifyShown("⇧ K");
        click("left shift");
        verifyShown("K");
    }
    function test_modifiersAloneCanBeTakenBack() {
        Stage.enter("picker");
        click("left shift");
        verifyShown("⇧");
        click("left shift");
        verifyShown("Click keys below");
        verify(!control("Assign to Key 3").enabled);
    }
    function test_assigningBindsAndCloses() {
        Stage.enter("picker-composed");
        verify(control("Assign to Key 3").enabled);
        click("Assign to Key 3");
        verify(!isOpen());
        compare(Stage.stored("P", 3), "⌘ ⇧ K");
        verifyShown("Key 3 — ⌘ ⇧ K");
    }
    function test_aPadThatComesMeanwhileTakesNothingAway() {
        Stage.enter("picker-composed");
        Stage.turnTo("M"); // of which nobody knows what its keys send
        compare(Stage.app.mapping.selectedKey, 0);
        verifyShown("⌘ ⇧ K");
        verify(!control("Assign to Key 3").enabled);
        Stage.turnTo("P");
        click("Assign to Key 3");
        verify(!isOpen());
        compare(Stage.stored("P", 3), "⌘ ⇧ K");
        verifyShown("Key 3 — ⌘ ⇧ K");
    }
    function test_modifiersAloneCanBeAssigned() {
        Stage.enter("picker");
        click("left option");
        click("Assign to Key 3");
        compare(Stage.stored("P", 3), "⌥");
    }
    function test_leavingBindsNothing_data() {
        return [{ tag: "Cancel", act: () => click("Cancel") }, { tag: "Close", act: () => click("Close") },
            { tag: "Escape", act: () => Stage.key(Qt.Key_Escape) }];
    }
    function test_leavingBindsNothing(data) {
        Stage.enter("picker-composed");
        data.act();
        verify(!isOpen());
        compare(Stage.stored("P", 3), "");
        click("Choose on keyboard…");
        verifyShown("Click keys below");
    }
    function test_disabledItAssignsNothing() {
        Stage.enter("picker");
        click("Assign to Key 3");
        verify(isOpen());
        compare(Stage.stored("P", 3), "");
    }

    // Typing on the keyboard in front of the user.
    function test_whatIsTypedIsComposed_data() {
        return [
            { tag: "K", key: Qt.Key_K, modifiers: Qt.NoModifier, drawn: "k", shown: "K" },
            { tag: "Ctrl+Shift+K", key: Qt.Key_K, modifiers: Qt.ControlModifier | Qt.ShiftModifier, drawn: "k", shown: Qt.platform.os === "osx" ? "⌘ ⇧ K" : "⇧ ⌃ K" },
            { tag: "Alt+F5", key: Qt.Key_F5, modifiers: Qt.AltModifier, drawn: "f5", shown: "⌥ F5" },
            { tag: "Shift+!", key: Qt.Key_Exclam, modifiers: Qt.ShiftModifier, drawn: "1", shown: "⇧ 1" },
            { tag: "Backspace", key: Qt.Key_Backspace, modifiers: Qt.NoModifier, drawn: "delete or backspace", shown: "⌫" }
        ];
    }
    function test_whatIsTypedIsComposed(data) {
        Stage.enter("picker");
        Stage.key(data.key, data.modifiers); // which go down before it and come up after it
        verifyShown(data.shown);
        verify(Stage.isChecked(control(data.drawn)));
        compare(Stage.focused(), "escape", "the keyboard stays where it is");
        click("Assign to Key 3");
        compare(Stage.stored("P", 3), data.shown);
    }
    function test_theSameKeyTwiceStays() {
        Stage.enter("picker");
        Stage.key(Qt.Key_K, Qt.AltModifier);
        Stage.key(Qt.Key_K, Qt.AltModifier);
        verifyShown("⌥ K");
    }
    function test_anotherKeyTakesThePlaceOfTheTypedOne() {
        Stage.enter("picker");
        Stage.key(Qt.Key_K);
        Stage.key(Qt.Key_J);
        verify(Stage.isChecked(control("j")));
        verify(!Stage.isChecked(control("k")));
    }
    function test_aModifierThatComesUpBeforeTheKeyStays() {
        Stage.enter("picker");
        Stage.keyDown(Qt.Key_Alt);
        Stage.keyDown(Qt.Key_K, Qt.AltModifier);
        Stage.keyUp(Qt.Key_Alt, Qt.AltModifier);
        Stage.keyUp(Qt.Key_K);
        verifyShown("⌥ K");
    }
    function test_aModifierThatIsTappedAloneIsToggled() {
        Stage.enter("picker");
        Stage.key(Qt.Key_Shift);
        verify(Stage.isChecked(control("left shift")));
        Stage.key(Qt.Key_Shift);
        verifyShown("Click keys below");
    }
    function test_modifiersThatAreHeldTogetherAreNotTapped_data() {
        return [{ tag: "in the same order", up: Qt.Key_Alt, then: Qt.Key_Shift, held: Qt.ShiftModifier },
            { tag: "in reverse", up: Qt.Key_Shift, then: Qt.Key_Alt, held: Qt.AltModifier }];
    }
    function test_modifiersThatAreHeldTogetherAreNotTapped(data) {
        Stage.enter("picker");
        Stage.keyDown(Qt.Key_Alt);
        Stage.keyDown(Qt.Key_Shift, Qt.AltModifier);
        Stage.keyUp(data.up, Qt.AltModifier | Qt.ShiftModifier);
        Stage.keyUp(data.then, data.held);
        verifyShown("Click keys below");
    }
    function test_aModifierThatIsHeldIsTheLatchedOneOfEitherSide() {
        Stage.enter("picker");
        click("right shift");
        Stage.key(Qt.Key_K, Qt.ShiftModifier);
        verifyShown("⇧R K");
    }
    function test_aModifierThatIsHeldWhileTheSheetIsWorkedIsNotTapped() {
        Stage.enter("picker");
        Stage.keyDown(Qt.Key_Shift);
        Stage.keyDown(Qt.Key_Right, Qt.ShiftModifier);
        compare(Stage.focused(), "f1");
        Stage.keyUp(Qt.Key_Right, Qt.ShiftModifier);
        Stage.keyUp(Qt.Key_Shift, Qt.ShiftModifier);
        verifyShown("Click keys below");
    }

    function test_byKeyboardAlone() {
        Stage.enter("selected-empty");
        tabTo("Choose on keyboard…");
        Stage.key(Qt.Key_Return);
        compare(Stage.focused(), "escape");
        Stage.key(Qt.Key_Down);
        Stage.key(Qt.Key_Right);
        compare(Stage.focused(), "1");
        Stage.key(Qt.Key_Space);
        verifyShown("1");
        for (let row = 0; row < 4; ++row)
            Stage.key(Qt.Key_Down);
        const modifier = Stage.focused();
        verify(modifier in symbols, modifier);
        Stage.key(Qt.Key_Return);
        verify(Stage.isChecked(control(modifier)));
        tabTo("Assign to Key 3");
        Stage.key(Qt.Key_Return);
        verify(!isOpen());
        compare(Stage.stored("P", 3), symbols[modifier] + " 1");
    }
    function test_arrowsStayOnTheKeyboard() {
        Stage.enter("picker");
        Stage.key(Qt.Key_Left);
        Stage.key(Qt.Key_Up);
        compare(Stage.focused(), "escape");
    }
    function test_tabPassesTheKeyboardAsOneStop() {
        Stage.enter("picker");
        Stage.key(Qt.Key_Right);
        const key = Stage.focused();
        Stage.key(Qt.Key_Tab);
        compare(Stage.focused(), "Cancel");
        Stage.key(Qt.Key_Backtab, Qt.ShiftModifier);
        compare(Stage.focused(), key);
    }
    function test_theKeyboardReturnsToTheButton() {
        Stage.enter("selected-empty");
        tabTo("Choose on keyboard…");
        Stage.key(Qt.Key_Return);
        Stage.key(Qt.Key_Escape);
        compare(Stage.focused(), "Choose on keyboard…");
    }
}
