import QtQuick
import CorvidKit

// A thin line between rows, of whole pixels: with parts of pixels one line would be thicker than the next.
Item {
    id: divider

    readonly property real pixels: Style.hairline * Screen.devicePixelRatio

    implicitHeight: Style.hairline

    Rectangle {
        width: parent.width
        height: Style.hairline
        color: Style.divider
        // The renderer makes heights whole points.
        transform: Scale {
            yScale: Math.max(1, Math.round(divider.pixels)) / divider.pixels
        }
    }
}
