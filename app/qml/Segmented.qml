import QtQuick
import Trellivar

// A choice of one among a few, all in sight. The arrow keys choose; Tab passes it as one control.
Rectangle {
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

    implicitWidth: row.width + 4
    implicitHeight: row.height + 4
    radius: Theme.radius
    color: Theme.window
    border.width: 1
    border.color: Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: name

    Row {
        id: row

        x: 2
        y: 2

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
