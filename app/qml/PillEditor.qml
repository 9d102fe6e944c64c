import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// The name of a key while it is edited: Enter or leaving keeps it, Escape does not.
TextField {
    id: editor

    // What is typed belongs to the mode in which it was begun.
    readonly property string mode: App.mapping.activeMode

    signal kept(string name)
    signal dropped

    function begin(name: string) {
        text = name;
        selectAll();
        forceActiveFocus(Qt.OtherFocusReason);
    }

    placeholderText: App.texts.renamePlaceholder
    placeholderTextColor: Theme.quietText
    color: Theme.text
    selectionColor: Theme.accent
    selectedTextColor: Theme.textOnAccent
    font.pixelSize: Theme.body
    horizontalAlignment: TextInput.AlignHCenter
    padding: Theme.unit / 2
    background: null
    Accessible.name: App.texts.renamePlaceholder

    onModeChanged: if (visible)
        dropped()
    onActiveFocusChanged: if (visible && !activeFocus)
        kept(text)
    Keys.onReturnPressed: kept(text)
    Keys.onEnterPressed: kept(text)
    Keys.onEscapePressed: dropped()
}
