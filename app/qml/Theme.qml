pragma Singleton

import QtQuick
import Trellivar

// Colours, sizes and type of everything. Dark and light are designed apart: on dark, what is nearer is
// lighter; on light, it casts a shadow.
QtObject {
    readonly property bool isDark: App.isDark

    readonly property color window: isDark ? "#15161a" : "#e9ecf0"
    readonly property color panel: isDark ? "#1c1e22" : "#f8f9fb"
    readonly property color raised: isDark ? "#292c32" : "#ffffff"
    readonly property color hovered: isDark ? "#343840" : "#e3e7ed"
    readonly property color line: isDark ? "#30343b" : "#d3d7de"
    readonly property color text: isDark ? "#f2f3f5" : "#1a1c20"
    readonly property color quietText: isDark ? "#a8aeb8" : "#535a65"
    readonly property color accent: isDark ? "#6cb2ff" : "#125cbd"
    readonly property color textOnAccent: isDark ? "#0b1420" : "#ffffff"
    readonly property color accentQuiet: isDark ? "#1e2f44" : "#d9e6f8"
    readonly property color error: isDark ? "#ff9189" : "#a8221b"
    readonly property color warning: isDark ? "#f2c46d" : "#744c00"
    readonly property color success: isDark ? "#7fd993" : "#17652f"
    readonly property color shade: isDark ? "#b0000000" : "#60202530"

    // The pad as an object: a body, a bed sunk into it, and caps that stand in the bed.
    readonly property color padTop: isDark ? "#454951" : "#ffffff"
    readonly property color padBody: isDark ? "#2d3036" : "#d9dee5"
    readonly property color padEdge: isDark ? "#0c0d0f" : "#a3abb8"
    readonly property color padShine: isDark ? "#5c616b" : "#ffffff"
    readonly property color padShadow: isDark ? "#0c000000" : "#051c2434"
    readonly property color padText: isDark ? "#d6dae0" : "#454c57"
    readonly property color bed: isDark ? "#0f1012" : "#a9b1bd"
    readonly property color bedEdge: isDark ? "#0a0b0d" : "#8e97a5"
    readonly property color capHigh: isDark ? "#575c66" : "#ffffff"
    readonly property color capHover: isDark ? "#5f646e" : "#e6eefa"
    readonly property color capLow: isDark ? "#41454d" : "#eef1f5"
    readonly property color capSide: isDark ? "#3c4048" : "#d2d8e0"
    readonly property color capFoot: isDark ? "#25282d" : "#b5bdc9"
    readonly property color capRim: isDark ? "#6b717c" : "#ffffff"
    readonly property color capText: isDark ? "#f7f8fa" : "#1a1c20"
    readonly property color capQuietText: isDark ? "#e0e3e8" : "#535a65"
    readonly property color capLitHigh: isDark ? "#37598a" : "#d4e5fd"
    readonly property color capLitLow: isDark ? "#294670" : "#bcd6fa"
    readonly property color glow: isDark ? "#506cb2ff" : "#4a125cbd"
    readonly property color cable: isDark ? "#41454d" : "#7d8694"
    readonly property color plug: isDark ? "#868c97" : "#c3cad4"

    readonly property int unit: 8
    readonly property int radius: 8
    readonly property int largeRadius: 16
    readonly property int controlHeight: 32
    readonly property int focusWidth: 2
    readonly property int minimumWidth: 880
    readonly property int minimumHeight: 600
    readonly property int barHeight: 64
    readonly property int sideWidth: 304
    readonly property int writeWidth: 160
    readonly property int capLargest: 208
    readonly property int capDrawn: 72
    readonly property int ringSize: 80
    readonly property int glyphSize: 16
    readonly property int popoverWidth: 304

    readonly property int small: 12
    readonly property int body: 14
    readonly property int large: 24

    // Short, and none at all where people asked for none.
    readonly property int motion: App.isMotionReduced ? 0 : 160

    // The light of a connection.
    function linkColor(link: string): color {
        return link === "usb" ? success : link === "wireless" ? accent : quietText;
    }
}
