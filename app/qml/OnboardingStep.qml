import QtQuick
import QtQuick.Layouts
import Trellivar

// A step of the first start as a card: open while it is to do, closed with a tick once it is done.
Rectangle {
    id: card

    required property int number
    required property string title
    required property string why
    required property string badge
    required property bool isDone
    required property bool isActive
    // The text of its button; empty without one.
    required property string action

    signal actionRequested

    implicitHeight: content.implicitHeight + Theme.unit * 3
    radius: Theme.radius
    color: isActive ? Theme.panel : "transparent"
    border.width: 1
    border.color: isActive ? Theme.accent : Theme.line
    Accessible.role: Accessible.Grouping
    Accessible.name: title

    RowLayout {
        id: content

        x: Theme.unit * 2
        y: Theme.unit * 1.5
        width: parent.width - Theme.unit * 4
        spacing: Theme.unit * 2

        StepMark {
            Layout.alignment: Qt.AlignTop
            number: card.number
            isDone: card.isDone
            isActive: card.isActive
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit / 2

            RowLayout {
                Layout.fillWidth: true
                spacing: Theme.unit * 2

                Text {
                    Layout.fillWidth: true
                    Layout.minimumHeight: Theme.unit * 3
                    verticalAlignment: Text.AlignVCenter
                    text: card.title
                    color: card.isActive ? Theme.text : Theme.quietText
                    font.pixelSize: Theme.body
                    font.weight: Font.DemiBold
                    wrapMode: Text.Wrap
                }
                Text {
                    Layout.alignment: Qt.AlignTop
                    Layout.preferredHeight: Theme.unit * 3
                    verticalAlignment: Text.AlignVCenter
                    text: card.badge
                    color: card.isDone ? Theme.success : card.isActive ? Theme.accent : Theme.quietText
                    font.pixelSize: Theme.small
                    font.weight: Font.DemiBold
                }
            }
            Text {
                Layout.fillWidth: true
                visible: !card.isDone
                text: card.why
                color: Theme.quietText
                font.pixelSize: card.isActive ? Theme.body : Theme.small
                lineHeight: 1.15
                wrapMode: Text.Wrap
            }
            ActionButton {
                Layout.topMargin: Theme.unit
                visible: card.isActive && text.length > 0
                text: card.action
                isPrimary: true
                onClicked: card.actionRequested()
            }
        }
    }
}
