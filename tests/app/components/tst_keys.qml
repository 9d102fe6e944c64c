import QtQuick
import QtTest

// The drawn pad: its keys and the pills above them.
StageCase {
    name: "Keys"

    function cap(key: int): Item {
        return part("KeycapView", key - 1);
    }
    function pill(key: int): Item {
        return part("ActionPill", key - 1);
    }

    function test_eachKeyShowsWhatItDoes() {
        Stage.enter("usb");
        compare(Stage.count("KeycapView"), 3);
        compare(Stage.count("ActionPill"), 3);
        compare([cap(1).legend, cap(2).legend, cap(3).legend].join("|"), "⌘ C|Volume Up|");
        compare([1, 2, 3].map(key => Stage.name(pill(key))).join("|"), "Copy|Volume Up|Empty");
        verifyShown("⌘ C");
        for (let key = 1; key <= 3; ++key)
            verifyShown(String(key));
    }

    function test_aClickSelects_data() {
        return [{ tag: "key", item: cap }, { tag: "pill", item: pill }];
    }
    function test_aClickSelects(data) {
        Stage.enter("usb");
        for (const key of [2, 3, 1]) {
            Stage.click(data.item(key));
            compare(Stage.app.mapping.selectedKey, key);
            compare([1, 2, 3].filter(each => cap(each).isSelected).join(), String(key));
            compare([1, 2, 3].filter(each => pill(each).isSelected).join(), String(key));
        }
    }
    function test_theKeyboardSelects_data() {
        return [{ tag: "Space", key: Qt.Key_Space }, { tag: "Return", key: Qt.Key_Return }, { tag: "Enter", key: Qt.Key_Enter }];
    }
    function test_theKeyboardSelects(data) {
        Stage.enter("usb");
        tabTo(Stage.name(cap(1)));
        Stage.key(Qt.Key_Right);
        Stage.key(data.key);
        compare(Stage.app.mapping.selectedKey, 2);
    }

    function test_aKeyIsLitWhileItIsHeldOnThePad() {
        Stage.enter("usb");
        for (const key of [1, 2, 3]) {
            Stage.hold(key);
            Stage.pass(0.6); // a chord may wait for its second key
            compare([1, 2, 3].filter(each => cap(each).contentItem.isLit).join(), String(key));
            Stage.letGo(key);
            Stage.pass(0.6);
            compare([1, 2, 3].filter(each => cap(each).contentItem.isLit).join(), "");
        }
    }

    function test_withoutASelectionThePanelSaysWhatToDo() {
        Stage.enter("usb");
        verifyShown("No key selected");
        verifyShown("Assign an action first");
        Stage.click(cap(1));
        verifyNotShown("No key selected");
    }
    function test_aBoundPillTellsHowItIsRenamed() {
        Stage.enter("usb");
        compare(Stage.description(pill(1)), "Double-click to rename");
        compare(Stage.description(pill(3)), "Assign an action first");
    }

    function test_thePointerBringsAHint_data() {
        return [{ tag: "a bound pill", item: () => pill(1), hint: "Double-click to rename" },
            { tag: "an empty pill", item: () => pill(3), hint: "Assign an action first", isThere: true },
            { tag: "a key with a name", item: () => cap(1), hint: "Copy", isThere: true },
            { tag: "the settings", item: () => control("SETTINGS"), hint: "SETTINGS" }];
    }
    function test_thePointerBringsAHint(data) {
        const shown = () => Stage.texts().filter(text => text === data.hint).length;
        Stage.enter("usb");
        const before = shown();
        compare(before > 0, data.isThere ?? false);
        Stage.hover(data.item());
        compare(shown(), before, "not at once");
        tryVerify(() => shown() === before + 1); // it waits for a real half of a second
        Stage.pointAway();
        tryVerify(() => shown() === before);
    }

    function beginRenaming(key: int) {
        Stage.doubleClick(pill(key));
        compare(Stage.name(Stage.window.activeFocusItem), "Name");
    }
    function test_enterKeepsAName_data() {
        return [{ tag: "Return", key: Qt.Key_Return }, { tag: "Enter", key: Qt.Key_Enter }];
    }
    function test_enterKeepsAName(data) {
        Stage.enter("usb");
        beginRenaming(2);
        Stage.type("Louder");
        compare(Stage.stored("P", 2), "Volume Up", "nothing is kept before the end");
        Stage.key(data.key);
        compare(Stage.name(pill(2)), "Louder");
        compare(Stage.stored("P", 2), "Volume Up: Louder");
        compare(cap(2).legend, "Volume Up", "what the key does is the same");
        compare(Stage.focused(), "Louder");
    }
    function test_escapeDropsAName() {
        Stage.enter("usb");
        beginRenaming(1);
        Stage.type("Something else");
        Stage.key(Qt.Key_Escape);
        compare(Stage.name(pill(1)), "Copy");
        compare(Stage.stored("P", 1), "⌘ C: Copy");
    }
    function test_anEmptyNameClears() {
        Stage.enter("usb");
        beginRenaming(1);
        Stage.key(Qt.Key_Backspace); // the old name is selected
        Stage.key(Qt.Key_Return);
        compare(Stage.name(pill(1)), "⌘ C");
        compare(Stage.stored("P", 1), "⌘ C");
    }
    function test_leavingKeepsAName() {
        Stage.enter("usb");
        beginRenaming(1);
        Stage.type("Duplicate");
        Stage.click(cap(3));
        compare(Stage.stored("P", 1), "⌘ C: Duplicate");
        compare(Stage.app.mapping.selectedKey, 3);
    }
    function test_renamingBeginsWithTheOldName() {
        Stage.enter("usb");
        beginRenaming(1);
        compare(Stage.window.activeFocusItem.text, "Copy");
        compare(Stage.window.activeFocusItem.selectedText, "Copy");
        Stage.key(Qt.Key_Escape);
        beginRenaming(2);
        compare(Stage.window.activeFocusItem.text, "", "there is no name yet");
        compare(Stage.window.activeFocusItem.placeholderText, "Name");
    }
    function test_renamingByKeyboard() {
        Stage.enter("usb");
        tabTo("Copy");
        Stage.key(Qt.Key_Return);
        Stage.type("Twice");
        Stage.key(Qt.Key_Return);
        compare(Stage.stored("P", 1), "⌘ C: Twice");
    }
    function test_aKeyWithoutABindingHasNoName() {
        Stage.enter("usb");
        Stage.doubleClick(pill(3));
        verify(!pill(3).isEditing);
        compare(Stage.app.mapping.selectedKey, 3);
        compare(Stage.stored("P", 3), "");
    }
    function test_aNameBelongsToTheModeInWhichItWasBegun() {
        Stage.enter("usb");
        beginRenaming(1);
        Stage.type("Lost");
        Stage.app.mapping.setMode("M");
        Stage.settle();
        compare(Stage.stored("M", 1), "");
        compare(Stage.stored("P", 1), "⌘ C: Copy");
    }
}
