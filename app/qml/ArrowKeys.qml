import QtQuick
import QtQuick.Templates as T

// A group of controls between which the arrow keys move, as Tab does.
Item {
    id: group

    function holds(item: Item): bool {
        for (let at = item; at; at = at.parent) {
            if (at === group)
                return true;
        }
        return false;
    }
    function move(isForward: bool) {
        // In a text field the arrow keys move in the text.
        const from = group.Window.activeFocusItem as T.AbstractButton;
        const next = from?.nextItemInFocusChain(isForward) ?? null;
        if (holds(next))
            next.forceActiveFocus(Qt.TabFocusReason);
    }

    implicitWidth: childrenRect.width
    implicitHeight: childrenRect.height
    Keys.onLeftPressed: move(false)
    Keys.onRightPressed: move(true)
    Keys.onUpPressed: move(false)
    Keys.onDownPressed: move(true)
}
