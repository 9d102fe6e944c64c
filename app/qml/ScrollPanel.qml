import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// As much of its content as there is room for. It scrolls to what the keyboard is at.
Flickable {
    id: panel

    readonly property Item focused: Window.activeFocusItem

    function show(item: Item) {
        const top = item.mapToItem(contentItem, 0, 0).y;
        const bottom = top + item.height;
        if (top >= 0 && top < contentY + Theme.unit)
            contentY = Math.max(0, top - Theme.unit);
        else if (bottom <= contentHeight && bottom > contentY + height - Theme.unit)
            contentY = Math.min(contentHeight - height, bottom + Theme.unit - height);
    }

    onFocusedChanged: {
        for (let at = focused; at; at = at.parent) {
            if (at === contentItem)
                show(focused);
        }
    }
    contentHeight: contentItem.childrenRect.height
    boundsBehavior: Flickable.StopAtBounds
    clip: contentHeight > height
    interactive: contentHeight > height
    ScrollBar.vertical: ScrollBar {}
}
