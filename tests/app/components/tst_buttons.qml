import QtQuick
import QtTest

// The controls that everything else is made of.
StageCase {
    name: "Buttons"

    readonly property string counting: "Column { property int clicks: 0; %1 { onClicked: ++parent.clicks; %2 } }"

    function test_actionButton_isClickedByMouseAndKeyboard_data() {
        return [{ tag: "mouse", act: () => click("Press") },
            { tag: "Space", act: () => { tabTo("Press"); Stage.key(Qt.Key_Space); } },
            { tag: "Return", act: () => { tabTo("Press"); Stage.key(Qt.Key_Return); } },
            { tag: "Enter", act: () => { tabTo("Press"); Stage.key(Qt.Key_Enter); } }];
    }
    function test_actionButton_isClickedByMouseAndKeyboard(data) {
        const root = Stage.show(counting.arg("ActionButton").arg("text: 'Press'"));
        data.act();
        compare(root.clicks, 1);
    }
    function test_actionButton_disabledDoesNothing() {
        const root = Stage.show(counting.arg("ActionButton").arg("text: 'Press'; enabled: false"));
        click("Press");
        Stage.key(Qt.Key_Tab);
        Stage.key(Qt.Key_Space);
        compare(root.clicks, 0);
        verify(part("ActionButton", 0).opacity < 1, "it looks disabled");
    }
    function test_actionButton_hasNoRingForTheMouse() {
        Stage.show(counting.arg("ActionButton").arg("text: 'Press'"));
        click("Press");
        verify(!part("ActionButton", 0).visualFocus, "the mouse needs no ring");
    }
    function test_actionButton_hasARingForTheKeyboard() {
        Stage.show(counting.arg("ActionButton").arg("text: 'Press'"));
        tabTo("Press");
        verify(part("ActionButton", 0).visualFocus);
    }

    function test_toggleSwitch_data() {
        return [{ tag: "mouse", act: () => click("On") },
            { tag: "Space", act: () => { tabTo("On"); Stage.key(Qt.Key_Space); } },
            { tag: "Return", act: () => { tabTo("On"); Stage.key(Qt.Key_Return); } }];
    }
    function test_toggleSwitch(data) {
        const root = Stage.show("Column { property int flips: 0; ToggleSwitch { text: 'On'; onToggled: ++parent.flips } }");
        verify(!Stage.isChecked(control("On")));
        data.act();
        compare(root.flips, 1);
        verify(Stage.isChecked(control("On")));
        data.act();
        compare(root.flips, 2);
        verify(!Stage.isChecked(control("On")));
    }

    readonly property string choice: "Column { id: root; property string value: 'b';"
        + " ActionButton { text: 'Before' }"
        + " Segmented { name: 'Choice';"
        + ["a", "b", "c"].map(each => " Segment { text: '" + each.toUpperCase() + "'; isChosen: root.value === '" + each
            + "'; onClicked: root.value = '" + each + "' }").join("")
        + " }"
        + " ActionButton { text: 'Behind' } }"

    function test_segmented_choosesByMouse() {
        const root = Stage.show(choice);
        verify(Stage.isChecked(control("B")));
        click("C");
        compare(root.value, "c");
        verify(Stage.isChecked(control("C")));
        verify(!Stage.isChecked(control("B")));
    }
    function test_segmented_choosesByArrows() {
        const root = Stage.show(choice);
        tabTo("B");
        Stage.key(Qt.Key_Left);
        compare(root.value, "a");
        Stage.key(Qt.Key_Left);
        compare(root.value, "a", "there is nothing before the first");
        Stage.key(Qt.Key_Right);
        Stage.key(Qt.Key_Right);
        compare(root.value, "c");
        Stage.key(Qt.Key_Right);
        compare(root.value, "c", "there is nothing behind the last");
    }
    function test_segmented_isOneStopForTab() {
        Stage.show(choice);
        tabTo("Before");
        Stage.key(Qt.Key_Tab);
        compare(Stage.focused(), "B");
        Stage.key(Qt.Key_Tab);
        compare(Stage.focused(), "Behind");
        Stage.key(Qt.Key_Backtab, Qt.ShiftModifier);
        compare(Stage.focused(), "B");
    }

    function test_timeRing_emptiesInItsPeriod() {
        Stage.setMotionReduced(false);
        const ring = Stage.show("TimeRing { period: 8000 }");
        fuzzyCompare(ring.remaining, 1, 0.01);
        Stage.pass(2);
        fuzzyCompare(ring.remaining, 0.75, 0.01);
        Stage.pass(4);
        fuzzyCompare(ring.remaining, 0.25, 0.01);
    }
}
