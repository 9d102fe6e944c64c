import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// The caption of a key above it: a click selects the key, a double click renames what it does.
AbstractButton {
    id: pill

    required property int keyId
    required property string caption
    required property string label
    required property bool isBound
    required property bool isSelected
    property bool isEditing: false

    function edit() {
        App.mapping.select(keyId);
        isEditing = isBound;
        if (isEditing)
            editor.begin(label);
    }
    function finish() {
        const wasTypedIn = editor.activeFocus;
        isEditing = false;
        if (wasTypedIn)
            forceActiveFocus(Qt.OtherFocusReason);
    }

    // It is as wide as its caption asks for, centred on its key.
    leftInset: isEditing ? 0 : Math.max(0, Math.min(width * 0.18, (width - implicitContentWidth) / 2 - Theme.unit * 2))
    rightInset: leftInset
    implicitHeight: implicitContentHeight + topPadding + bottomPadding
    padding: Theme.unit
    hoverEnabled: true
    text: caption
    Accessible.role: Accessible.Button
    Accessible.name: caption
    Accessible.description: tip.text
    Accessible.onPressAction: clicked()
    onClicked: App.mapping.select(keyId)
    onDoubleClicked: edit()
    Keys.onReturnPressed: edit()
    Keys.onEnterPressed: edit()

    HintTip {
        id: tip

        text: pill.isBound ? App.texts.helpRename : App.texts.helpAssignFirst
        visible: (pill.hovered || pill.visualFocus) && !pill.isEditing
    }
    contentItem: Text {
        text: pill.text
        opacity: pill.isEditing ? 0 : 1
        color: pill.isSelected ? Theme.accent : pill.isBound ? Theme.text : Theme.quietText
        font.pixelSize: Theme.body
        font.weight: pill.isSelected ? Font.DemiBold : Font.Normal
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        wrapMode: Text.Wrap
        // The panel shows what people write beyond that.
        maximumLineCount: 2
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: Math.min(height / 2, Theme.largeRadius)
        color: pill.isEditing ? Theme.panel : pill.isSelected ? Theme.accentQuiet : pill.hovered || pill.down ? Theme.hovered : Theme.raised
        border.width: pill.isSelected || pill.isEditing || !Theme.isDark ? 1 : 0
        border.color: pill.isSelected || pill.isEditing ? Theme.accent : Theme.line

        FocusRing {
            cornerRadius: parent.radius
            visible: pill.visualFocus || pill.isEditing
        }
    }
    Rectangle {
        // The line down to the key.
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: parent.bottom
        width: 1
        height: (pill.parent?.parent as CaptionRow)?.leader ?? 0
        color: pill.isSelected ? Theme.accent : Theme.quietText
        opacity: pill.isSelected ? 1 : 0.5
    }
    PillEditor {
        id: editor

        anchors.fill: parent
        visible: pill.isEditing
        onKept: name => {
            App.mapping.rename(pill.keyId, name);
            pill.finish();
        }
        onDropped: pill.finish()
    }
}
