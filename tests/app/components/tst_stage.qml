import QtQuick
import QtTest

// That these tests see what they are meant to see.
StageCase {
    name: "Stage"

    // Its warnings are wanted; the usual end would fail.
    function cleanup() {
        Stage.end();
        Stage.forgetWarnings();
    }

    function test_warningsOfQmlAreHeard_data() {
        return [
            {
                tag: "type error",
                qml: "Item { Component.onCompleted: nothing.at(all) }",
                warning: "ReferenceError"
            },
            {
                tag: "binding loop",
                qml: "Item { width: height + 1; height: width + 1 }",
                warning: "Binding loop"
            },
            {
                tag: "failed assignment",
                qml: "Item { property var nothing; x: nothing }",
                warning: "Unable to assign"
            },
            {
                tag: "console",
                qml: "Item { Component.onCompleted: console.warn('careful') }",
                warning: "careful"
            }
        ];
    }
    function test_warningsOfQmlAreHeard(data) {
        Stage.show(data.qml);
        const heard = Stage.warnings.join("\n");
        verify(heard.includes(data.warning), heard);
    }

    function test_noWarningIsLostWhenTheStageBeginsAnew() {
        Stage.show("Item { Component.onCompleted: console.warn('first') }");
        Stage.begin();
        Stage.show("Item { Component.onDestruction: console.warn('last') }");
        Stage.end();
        compare(Stage.warnings.join(), "first,last");
    }
    function test_nothingIsHeardOfAComponentThatIsWell() {
        Stage.show("ActionButton { text: 'Press' }");
        compare(Stage.warnings.join("\n"), "");
    }

    function test_whatIsHiddenIsNotShown() {
        Stage.show("Column { Text { text: 'seen' } Text { text: 'hidden'; visible: false }"
                   + " Item { opacity: 0; Text { text: 'clear' } } }");
        compare(Stage.texts().join(), "seen");
    }

    function test_animationsMoveOnlyWithTime() {
        Stage.setMotionReduced(false);
        const item = Stage.show("Rectangle { width: 9; height: 9; color: 'red';"
                                + " NumberAnimation on x { from: 0; to: 100; duration: 1000 } }");
        const begin = item.x;
        Stage.settle();
        compare(item.x, begin);
        Stage.pass(0.5);
        fuzzyCompare(item.x, begin + 50, 2);
    }
}
