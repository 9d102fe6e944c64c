import QtQuick
import QtQuick.Layouts
import Trellivar

// The settings. Each takes effect at once.
Sheet {
    title: App.texts.settingsLabel
    width: Theme.unit * 58
    entry: App.language === "en" ? english : chinese

    SettingsRow {
        text: App.texts.language

        Segmented {
            name: App.texts.language

            // Languages are named in themselves, so that they are found by whoever looks for them.
            Segment {
                id: english

                text: "English"
                isChosen: App.language === "en"
                onClicked: App.language = "en"
            }
            Segment {
                id: chinese

                text: "简体中文"
                isChosen: App.language === "zh-Hans"
                onClicked: App.language = "zh-Hans"
            }
        }
    }
    SettingsRow {
        text: App.texts.appearance

        Segmented {
            name: App.texts.appearance

            Segment {
                text: App.texts.appearanceDark
                isChosen: App.appearance === "dark"
                onClicked: App.appearance = "dark"
            }
            Segment {
                text: App.texts.appearanceLight
                isChosen: App.appearance === "light"
                onClicked: App.appearance = "light"
            }
            Segment {
                text: App.texts.appearanceSystem
                isChosen: App.appearance === "system"
                onClicked: App.appearance = "system"
            }
        }
    }
    ToggleSwitch {
        Layout.fillWidth: true
        text: App.texts.startAtLogin
        checked: App.startAtLogin
        onToggled: App.startAtLogin = checked
    }
}
