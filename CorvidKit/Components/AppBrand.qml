import QtQuick

// Whose program this is, and how it looks.
QtObject {
    property string name: "App"
    property string symbol: "app.dashed"
    // From top to bottom.
    property list<color> gradient: ["#9a9aa0", "#6c6c72"]
    property color accent: Style.blue
    // The symbol's size as a part of the glyph's side.
    property real symbolScale: 0.5
}
