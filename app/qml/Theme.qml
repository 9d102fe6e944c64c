pragma Singleton

import QtQuick
import Trellivar

// Colours, sizes and type of everything. Dark and light are designed apart: on dark, what is nearer is
// lighter; on light, it casts a shadow.
QtObject {
    readonly property bool isDark: App.isDark

    readonly property color window: isDark ? "#17181b" : "#f2f3f6"
    readonly property color panel: isDark ? "#1f2125" : "#ffffff"
    readonly property color raised: isDark ? "#2b2e34" : "#ffffff"
    readonly property color hovered: isDark ? "#363a42" : "#e8eaef"
    readonly property color line: isDark ? "#3a3e46" : "#d5d8de"
    readonly property color text: isDark ? "#f2f3f5" : "#1b1d21"
    readonly property color quietText: isDark ? "#aab0ba" : "#555b66"
    readonly property color accent: isDark ? "#6cb2ff" : "#1460c4"
    readonly property color textOnAccent: isDark ? "#0b1420" : "#ffffff"
    readonly property color accentQuiet: isDark ? "#22344a" : "#dfeafa"
    readonly property color error: isDark ? "#ff9189" : "#b3261e"
    readonly property color success: isDark ? "#7fd993" : "#1c7337"
    readonly property color shade: isDark ? "#a0000000" : "#50202530"

    // The pad as an object.
    readonly property color padBody: isDark ? "#2a2c31" : "#dfe2e8"
    readonly property color padEdge: isDark ? "#111214" : "#bcc2cc"
    readonly property color padTop: isDark ? "#34373d" : "#eef0f4"
    readonly property color cap: isDark ? "#363a41" : "#fbfcfd"
    readonly property color capEdge: isDark ? "#1c1e22" : "#c3c8d1"

    readonly property color padShadow: isDark ? "#0c000000" : "#05000000"
    readonly property color padShine: isDark ? "#1cffffff" : "#ffffff"
    readonly property color well: isDark ? "#191a1d" : "#c9ced7"
    readonly property color capTop: isDark ? "#3e424a" : "#ffffff"
    readonly property color capGlow: isDark ? "#406cb2ff" : "#381460c4"
    readonly property color cable: isDark ? "#4a4e57" : "#9299a6"
    readonly property color plug: isDark ? "#7b818d" : "#c9ced6"
    readonly property color warning: isDark ? "#f2c46d" : "#7d5200"

    readonly property int unit: 8
    readonly property int radius: 10
    readonly property int controlHeight: 32
    readonly property int focusWidth: 2
    readonly property int minimumWidth: 880
    readonly property int minimumHeight: 600
    readonly property int barHeight: 64
    readonly property int sideWidth: 296
    readonly property int writeWidth: 152
    readonly property int capLargest: 208
    readonly property int ringSize: 80
    readonly property int popoverWidth: 304

    readonly property int small: 12
    readonly property int body: 14
    readonly property int large: 22

    // Short, and none at all where people asked for none.
    readonly property int motion: App.isMotionReduced ? 0 : 160
}
