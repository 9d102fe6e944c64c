import QtQuick
import QtQuick.Layouts
import Trellivar

// What keeps the application from working as it should, one below the other. Only the first is written
// out, so that the pad keeps its room.
ColumnLayout {
    readonly property alias count: repeater.count

    visible: count > 0
    spacing: Theme.unit / 2

    Repeater {
        id: repeater

        model: App.notes.rows

        Note {
            required property int index
            required property var model

            Layout.fillWidth: true
            title: model.title
            detail: model.detail
            action: model.action
            isBrief: index > 0
            onActionRequested: App.followNote(index)
        }
    }
}
