import QtQuick
import QtTest

// Tests on a stage that begins anew for each of them. A warning of Qt or QML fails the test.
TestCase {
    function init() {
        Stage.begin();
    }
    function cleanup() {
        Stage.end();
        const warnings = Stage.warnings.join("\n");
        Stage.forgetWarnings();
        compare(warnings, "", "no warnings");
    }

    function control(name: string): Item {
        const item = Stage.control(name);
        verify(item, "\"" + name + "\" can be worked");
        return item;
    }
    function part(component: string, number: int): Item {
        const item = Stage.part(component, number);
        verify(item, component + " " + number + " is there");
        return item;
    }
    function click(name: string) {
        Stage.click(control(name));
    }
    // The keyboard alone: to a control by Tab.
    function tabTo(name: string) {
        for (let stops = 0; stops < 60 && Stage.focused() !== name; ++stops)
            Stage.key(Qt.Key_Tab);
        compare(Stage.focused(), name);
    }
    function verifyShown(text: string) {
        verify(Stage.shows(text), "\"" + text + "\" is shown among " + Stage.texts().join(" | "));
    }
    function verifyNotShown(text: string) {
        verify(!Stage.shows(text), "\"" + text + "\" is not shown");
    }
}
