import QtQuick
import QtTest

// Every screen speaks both languages and changes at once.
StageCase {
    name: "Languages"

    function test_everyScreen_data() {
        return [
            { tag: "onboarding-start", en: ["SETUP", "Let's get Trellivar running", "WAITING", "AUTOMATIC", "Continue", "Open Accessibility settings"], zh: ["设置", "让 Trellivar 跑起来", "等待中", "自动", "继续", "打开“辅助功能”设置"] },
            { tag: "onboarding-halfway", en: ["DONE", "Open Input Monitoring settings"], zh: ["完成", "打开“输入监控”设置"] },
            { tag: "no-pad", en: ["No Orlo3 detected", "Empty", "No key selected", "Write to pad"], zh: ["未检测到 Orlo3", "未设置", "未选择按键", "写入键盘"] },
            { tag: "usb", en: ["Orlo3 · USB — ready to write", "Volume Up"], zh: ["Orlo3 · USB — 可写入", "音量 +"] },
            { tag: "wireless", en: ["Orlo3 · wireless"], zh: ["Orlo3 · 无线"] },
            { tag: "selected", en: ["Key 1 — Copy", "Record custom", "Choose on keyboard…", "Mute", "Button 1"], zh: ["按键 1 — Copy", "录制自定义快捷键", "在键盘上选择…", "静音", "按钮 1"] },
            { tag: "recording", en: ["Press your shortcut now…", "Cancel"], zh: ["现在按下你的快捷键…", "取消"] },
            { tag: "undiscovered", en: ["Mode M hasn't been discovered yet", "Discover this mode"], zh: ["模式 M 尚未识别", "识别此模式"] },
            { tag: "unlearned", en: ["Learn this key first.", "Capture Key 2"], zh: ["请先学习此按键。", "捕捉按键 2"] },
            { tag: "learning", en: ["Listening…"], zh: ["监听中…"] },
            { tag: "device", en: ["Refresh", "USB cable connected — Write to pad is ready."], zh: ["刷新", "USB 线已连接 — 可以写入键盘。"] },
            { tag: "picker", en: ["Compose a shortcut", "Click keys below", "Assign to Key 3"], zh: ["组合快捷键", "点击下方按键", "指定给按键 3"] },
            { tag: "discovery-switch", en: ["Discover Mode M", "Flip the switch to M", "Check connection", "Close"], zh: ["识别模式 M", "将开关拨到 M", "检查连接", "关闭"] },
            { tag: "discovery-listening", en: ["Press Key 1 on your Orlo3", "Press and release Key 1."], zh: ["按下 Orlo3 上的按键 1", "按下并松开按键 1。"] },
            { tag: "discovery-review", en: ["Captured", "Save Mode M"], zh: ["已捕捉", "保存模式 M"] },
            { tag: "discovery-done", en: ["Mode M discovered.", "Done"], zh: ["模式 M 识别完成。", "完成"] },
            { tag: "settings", en: ["SETTINGS", "Appearance", "Dark"], zh: ["设置", "外观", "深色"] },
            { tag: "writing", en: ["Writing…"], zh: ["写入中…"] },
            { tag: "written", en: ["Written P, M, R (firmware 1.0.7)", "P ✓"], zh: ["已写入 P, M, R（固件 1.0.7）", "P ✓"] },
            { tag: "partly-skipped", en: ["P — keys 2, 3 skipped (no firmware equivalent)"], zh: ["P — 按键 2, 3 已跳过（固件不支持）"] },
            { tag: "need-pad", en: ["Plug in / reconnect the Orlo3 via USB (replug if unresponsive)"], zh: ["请通过 USB 连接/重新连接 Orlo3（无响应时请重新插拔）"] }
        ];
    }
    function test_everyScreen(data) {
        Stage.enter(data.tag);
        data.en.forEach(verifyShown);
        Stage.setLanguage("zh-Hans");
        data.zh.forEach(verifyShown);
        data.en.filter(text => !data.zh.includes(text)).forEach(verifyNotShown);
        Stage.setLanguage("en");
        data.en.forEach(verifyShown);
    }

    // What has no words of its own may stay: names, symbols and keys.
    function test_nothingStaysEnglish_data() {
        return Stage.scenes().map(name => ({ tag: name }));
    }
    function test_nothingStaysEnglish(data) {
        Stage.enter(data.tag);
        const english = [...Stage.texts(), ...Stage.names()];
        Stage.setLanguage("zh-Hans");
        // The labels that were given to keys, what keys do, languages in their own words, the names on keys.
        const ofTheUser = ["Copy", "Copy window to clipboard", "⌃ ⌥ ⇧ ⌘ page_down", "⌘ ⇧ keypad_enter"];
        const ofKeys = ["1 Copy", "1 ⌃ ⌥ ⇧ ⌘ page_down", "3 Copy window to clipboard"];
        const known = [...ofTheUser, ...ofKeys, "English", "Space", "esc"];
        // An error is in the language of the moment at which it happened.
        const errors = [Stage.app.mapping.error, Stage.app.discovery?.error ?? "", Stage.app.write.state === "error" ? Stage.app.write.text : ""];
        // What the log says of a file is repeated as it stands there.
        const ofFiles = text => text.startsWith("the profiles cannot be read: ");
        const isLeft = text => english.includes(text) && /[A-Za-z]{3,}/.test(text) && !known.includes(text) && !errors.includes(text) && !ofFiles(text);
        const left = [...Stage.texts(), ...Stage.names()].filter(isLeft);
        compare(left.join("|"), "");
    }
}
