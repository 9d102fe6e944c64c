import QtQuick
import QtQuick.Controls.Basic
import QtQuick.Templates as T
import Trellivar

// What opens over a screen. Escape closes it, and the keyboard goes back to where it was.
Popup {
    id: panel

    // What the keyboard is at first; without it, the first control.
    property Item entry: null
    property Item opener: null
    // Whoever opened it with the keyboard sees where the keyboard is.
    property int reason: Qt.OtherFocusReason

    function focusOn(item: Item) {
        item.focus = false; // where it is already, a reason would change nothing
        item.forceActiveFocus(reason);
    }

    focus: true
    closePolicy: Popup.CloseOnEscape

    onAboutToShow: {
        opener = parent?.Window.activeFocusItem ?? null;
        reason = (opener as T.Control)?.visualFocus ? Qt.TabFocusReason : Qt.OtherFocusReason;
    }
    onOpened: focusOn(entry ?? contentItem.nextItemInFocusChain())
    onClosed: if (opener)
        focusOn(opener.visible ? opener : opener.nextItemInFocusChain())

    enter: Transition {
        NumberAnimation {
            property: "opacity"
            from: 0
            to: 1
            duration: Theme.motion
        }
    }
    exit: Transition {
        NumberAnimation {
            property: "opacity"
            from: 1
            to: 0
            duration: Theme.motion
        }
    }
}
