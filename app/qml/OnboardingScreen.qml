import QtQuick
import QtQuick.Layouts
import Trellivar

// The first start: what the application needs, one step at a time. It advances by itself.
ScrollPanel {
    id: screen

    readonly property real margin: Theme.unit * 3

    contentHeight: content.height + 2 * margin

    RowLayout {
        id: content

        x: (screen.width - width) / 2
        y: Math.max(screen.margin, (screen.height - height) / 2)
        width: Math.min(screen.width - Theme.unit * 8, Theme.unit * 116)
        spacing: Theme.unit * 5

        OnboardingHero {
            Layout.alignment: Qt.AlignVCenter
        }
        ColumnLayout {
            Layout.fillWidth: true
            spacing: Theme.unit * 1.5

            Text {
                text: App.texts.setupLabel
                color: Theme.accent
                font.pixelSize: Theme.small
                font.weight: Font.DemiBold
                font.letterSpacing: 1
            }
            Text {
                Layout.fillWidth: true
                text: App.texts.onboardTitle
                color: Theme.text
                font.pixelSize: Theme.large
                font.weight: Font.DemiBold
                wrapMode: Text.Wrap
                Accessible.role: Accessible.Heading
                Accessible.name: text
            }
            Text {
                Layout.fillWidth: true
                Layout.bottomMargin: Theme.unit
                text: App.texts.onboardSubtitle
                color: Theme.quietText
                font.pixelSize: Theme.body
                wrapMode: Text.Wrap
            }
            Repeater {
                model: App.onboarding.steps

                OnboardingStep {
                    required property int index
                    required property var model

                    Layout.fillWidth: true
                    number: index + 1
                    title: model.title
                    why: model.why
                    badge: model.badge
                    isDone: model.state === "done"
                    isActive: model.state === "active"
                    action: model.action
                    onActionRequested: App.openPermissionSettings(index)
                }
            }
            Notes {
                Layout.fillWidth: true
            }
            ActionButton {
                Layout.alignment: Qt.AlignRight
                Layout.topMargin: Theme.unit
                text: App.texts.continueButton
                isPrimary: true
                enabled: App.onboarding.canContinue
                onEnabledChanged: if (enabled)
                    forceActiveFocus()
                onClicked: App.finishOnboarding()
            }
        }
    }
}
