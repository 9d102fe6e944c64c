import QtQuick
import QtQuick.Layouts
import Trellivar

// The settings. Each takes effect at once.
Sheet {
    title: App.texts.settingsLabel
    width: Theme.unit * 58

    SettingsRow {
        text: App.texts.language

        Segmented {
            name: App.texts.language
            // Languages are named in themselves, so that they are found by whoever looks for them.
            choices: [
                {
                    value: "en",
                    text: "English"
                },
                {
                    value: "zh-Hans",
                    text: "简体中文"
                }
            ]
            value: App.language
            onChosen: value => App.language = value
        }
    }
    SettingsRow {
        text: App.texts.appearance

        Segmented {
            name: App.texts.appearance
            choices: [
                {
                    value: "dark",
                    text: App.texts.appearanceDark
                },
                {
                    value: "light",
                    text: App.texts.appearanceLight
                },
                {
                    value: "system",
                    text: App.texts.appearanceSystem
                }
            ]
            value: App.appearance
            onChosen: value => App.appearance = value
        }
    }
    ToggleSwitch {
        Layout.fillWidth: true
        text: App.texts.startAtLogin
        checked: App.startAtLogin
        onToggled: App.startAtLogin = checked
    }
}
