pragma Singleton
import QtQuick
import CorvidKit

// The colours and measures that all components share. Sizes are in points.
QtObject {
    readonly property bool isDark: Environment.isDark

    // Text, in the order of its importance. All of it has a contrast of 4.5 to 1 on whatever it lies on, and what is drawn
    // one of 3 to 1.
    readonly property color primary: isDark ? "#f5f5f7" : "#1d1d1f"
    readonly property color secondary: isDark ? "#bcbcc1" : "#5a5a5f"
    readonly property color tertiary: isDark ? "#a8a8ad" : "#626267"

    // Surfaces, from the back to the front.
    readonly property color window: isDark ? "#292929" : "#ededed"
    readonly property color windowBorder: isDark ? "#1effffff" : "#24000000"
    readonly property color card: isDark ? "#363637" : "#fbfbfc"
    readonly property color cardBorder: isDark ? "#14ffffff" : "#17000000"
    readonly property color divider: isDark ? "#16ffffff" : "#14000000"
    readonly property color menu: isDark ? "#3a3a3c" : "#fcfcfd"
    readonly property color menuBorder: isDark ? "#2effffff" : "#24000000"

    // Faint fills of items on a surface.
    readonly property color fill: isDark ? "#14ffffff" : "#0e000000"
    readonly property color hoverFill: isDark ? "#17ffffff" : "#0f000000"
    readonly property color pressedFill: isDark ? "#24ffffff" : "#1a000000"
    readonly property color cap: isDark ? "#1affffff" : "#ffffff"
    readonly property color capBorder: isDark ? "#21ffffff" : "#26000000"
    readonly property color selectedTab: isDark ? "#5f5f63" : "#ffffff"
    readonly property color shadow: isDark ? "#66000000" : "#2e000000"

    // The system's colours.
    readonly property color blue: isDark ? "#0a84ff" : "#007aff"
    readonly property color green: isDark ? "#30d158" : "#1c963b"
    readonly property color orange: isDark ? "#ff9f0a" : "#c46600"
    readonly property color grey: isDark ? "#98989d" : "#808085"
    readonly property color warningFill: isDark ? "#26ff9f0a" : "#1fff9500"
    readonly property color warningBorder: isDark ? "#40ff9f0a" : "#40f08c00"

    readonly property real cardRadius: 10
    readonly property real tabRadius: 6
    readonly property real rowRadius: 7
    readonly property real controlRadius: 6
    readonly property real hairline: 1

    readonly property int transition: Environment.reducesMotion || Environment.isSnapshot ? 0 : 140

    // The lighter end of a colour's gradient; no more than white symbols on it can bear.
    function lighter(base: color): color {
        return Qt.rgba(base.r + (1 - base.r) * 0.08, base.g + (1 - base.g) * 0.08, base.b + (1 - base.b) * 0.08, base.a);
    }

    // A colour dark enough for white text, and the end of its gradient with a larger `amount`.
    function underText(base: color, amount: real): color {
        return Qt.rgba(base.r * (1 - amount), base.g * (1 - amount), base.b * (1 - amount), base.a);
    }

    // A colour that can be told from every surface, also from highlighted rows and from shadows.
    function brandMark(base: color): color {
        return isDark ? Qt.rgba(base.r + (1 - base.r) * 0.3, base.g + (1 - base.g) * 0.3, base.b + (1 - base.b) * 0.3, base.a)
                      : underText(base, 0.3);
    }

    // The side of a symbol's square, as a multiple of the size of the text beside it.
    readonly property real symbolScale: 1.25

    // The room that a symbol takes beside text of that size.
    function symbolSide(size: real): real {
        return Math.round(size * symbolScale);
    }
}
