import QtQuick
import QtQuick.Controls.Basic
import Trellivar

// A choice of one among a few, all in sight. The arrow keys choose; Tab passes it as one control.
Control {
    id: control

    // A list of {value, text}.
    required property var choices
    required property string value
    required property string name

    signal chosen(string value)

    function chooseAt(index: int) {
        if (index < 0 || index >= segments.count)
            return;
        segments.itemAt(index).forceActiveFocus(Qt.TabFocusReason);
        chosen(choices[index].value);
    }

    padding: 2
    implicitWidth: row.implicitWidth + padding * 2
    implicitHeight: row.implicitHeight + padding * 2
    focusPolicy: Qt.NoFocus
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    background: Rectangle {
        radius: Theme.radius
        color: Theme.window
        border.width: 1
        border.color: Theme.line
    }
    contentItem: Row {
        id: row

        Repeater {
            id: segments

            model: control.choices

            Segment {
                required property var modelData
                required property int index

                text: modelData.text
                isChosen: modelData.value === control.value
                onClicked: control.chosen(modelData.value)
                Keys.onLeftPressed: control.chooseAt(index - 1)
                Keys.onRightPressed: control.chooseAt(index + 1)
            }
        }
    }
}
