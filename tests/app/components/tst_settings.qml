import QtQuick
import QtTest

// The settings, which take effect at once.
StageCase {
    name: "Settings"

    function isOpen(): bool {
        return Stage.control("Start at login") !== null;
    }

    function test_itShowsWhatIsSet() {
        Stage.enter("settings");
        for (const text of ["SETTINGS", "Language", "Appearance", "Start at login", "English", "简体中文", "Dark", "Light", "System"])
            verifyShown(text);
        compare(["English", "简体中文"].filter(name => Stage.isChecked(control(name))).join(), "English");
        compare(["Dark", "Light", "System"].filter(name => Stage.isChecked(control(name))).join(), "Dark");
        verify(Stage.isChecked(control("Start at login")), "on since everything was permitted");
    }
    function test_languageSwitchesAtOnceAndBack() {
        Stage.enter("settings");
        click("简体中文");
        compare(Stage.app.language, "zh-Hans");
        verifyShown("语言");
        verifyShown("写入键盘");
        verifyNotShown("Language");
        click("English");
        verifyShown("Language");
    }
    function test_eachAppearance_data() {
        return [{ tag: "Dark", value: "dark", dark: true }, { tag: "Light", value: "light", dark: false }];
    }
    function test_eachAppearance(data) {
        Stage.enter("settings");
        for (const system of [true, false]) {
            Stage.setSystemDark(system);
            click(data.tag);
            compare(Stage.app.appearance, data.value);
            compare(Stage.app.isDark, data.dark, "whatever the system says");
        }
    }
    function test_systemAppearanceFollowsTheSystem() {
        Stage.enter("settings");
        click("System");
        for (const dark of [false, true, false]) {
            Stage.setSystemDark(dark);
            compare(Stage.app.isDark, dark);
        }
        compare(Stage.app.appearance, "system");
    }
    function test_theWindowTakesTheAppearance() {
        Stage.enter("settings");
        const dark = String(Stage.window.color);
        click("Light");
        verify(String(Stage.window.color) !== dark);
        click("Dark");
        compare(String(Stage.window.color), dark);
    }
    function test_startAtLogin() {
        Stage.enter("settings");
        compare(Stage.calls.filter(call => call.startsWith("login")).join(), "login on");
        click("Start at login");
        verify(!Stage.isChecked(control("Start at login")));
        click("Start at login");
        compare(Stage.calls.filter(call => call.startsWith("login")).join(), "login on,login off,login on");
    }
    function test_byKeyboard() {
        Stage.enter("usb");
        tabTo("SETTINGS");
        Stage.key(Qt.Key_Return);
        verify(isOpen());
        tabTo("English");
        Stage.key(Qt.Key_Right);
        compare(Stage.app.language, "zh-Hans");
        Stage.key(Qt.Key_Left);
        tabTo("Dark");
        Stage.key(Qt.Key_Right);
        compare(Stage.app.appearance, "light");
        tabTo("Start at login");
        Stage.key(Qt.Key_Space);
        compare(Stage.app.startAtLogin, false);
        Stage.key(Qt.Key_Escape);
        verify(!isOpen());
        compare(Stage.focused(), "SETTINGS");
    }
    function test_closing() {
        Stage.enter("settings");
        click("Close");
        verify(!isOpen());
    }
}
