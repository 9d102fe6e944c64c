import QtQuick
import QtQuick.Layouts
import Trellivar

// What keeps the application from working as it should, one below the other.
ColumnLayout {
    // There is no room for two that are written out.
    property bool isTight: false

    visible: App.notes.count > 0
    spacing: Theme.unit / 2

    Repeater {
        model: App.notes.rows

        Note {
            required property int index
            required property var model

            Layout.fillWidth: true
            visible: model.isShown
            title: model.title
            detail: model.detail
            action: model.action
            isBrief: ((parent as Notes)?.isTight ?? false) && model.mayBeBrief
            onActionRequested: App.followNote(index)
        }
    }
}
