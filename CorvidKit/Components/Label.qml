import QtQuick
import CorvidKit

// One text in the user's font.
Text {
    property real size: 12
    property int weight: Font.Normal
    // How far below the middle of what stands beside it the baseline lies, so that the capitals are centred on it.
    readonly property real rise: Environment.capHeight(font) / 2

    // Whole points, so that what comes below begins on a pixel.
    height: Math.ceil(implicitHeight)
    font: Environment.font(size, weight)
    color: Style.primary
    textFormat: Text.PlainText
    verticalAlignment: Text.AlignVCenter
    // By the direction of the interface, also where a name is written in the other one.
    horizontalAlignment: Text.AlignLeft
    // A text longer than its place ends in an ellipsis.
    elide: Text.ElideRight
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
