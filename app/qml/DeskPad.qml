import QtQuick
import Trellivar

// The pad, whose keys are pressed with the mouse, with Space, or with the keys 1, 2 and 3.
PadBody {
    id: pad

    property bool isWindowActive: true
    readonly property var digits: [Qt.Key_1, Qt.Key_2, Qt.Key_3]

    function keyOf(event: KeyEvent): int {
        return event.modifiers === Qt.NoModifier || event.modifiers === Qt.KeypadModifier ? digits.indexOf(event.key) + 1 : 0;
    }
    function pressByKey(event: KeyEvent): bool {
        const key = keyOf(event);
        if (key !== 0 && !event.isAutoRepeat)
            Desk.press(key);
        return key !== 0;
    }
    function releaseByKey(event: KeyEvent): bool {
        const key = digits.indexOf(event.key) + 1;
        if (key !== 0 && !event.isAutoRepeat)
            Desk.release(key);
        return key !== 0;
    }

    // The release of a key that is held while the window loses the focus goes elsewhere.
    onIsWindowActiveChanged: if (!isWindowActive)
        Desk.releaseAll()
    mode: Desk.mode
    link: Desk.link === "bluetooth" ? "wireless" : Desk.link

    Repeater {
        model: Desk.keys

        DeskKey {}
    }
}
