import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// The name of a key while it is edited: Enter or leaving keeps it, Escape does not.
TextField {
    id: editor

    signal kept(string name)
    signal dropped

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

    Component.onCompleted: {
        selectAll();
        forceActiveFocus(Qt.OtherFocusReason);
    }
    onActiveFocusChanged: if (!activeFocus)
        kept(text)
    Keys.onReturnPressed: kept(text)
    Keys.onEnterPressed: kept(text)
    Keys.onEscapePressed: dropped()

    // What is typed belongs to the mode in which it was begun.
    Connections {
        target: App.mapping
        function onActiveModeChanged() {
            editor.dropped();
        }
    }
}
