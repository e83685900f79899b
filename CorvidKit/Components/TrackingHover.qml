import QtQuick
import CorvidKit

// Tells whether the pointer is over the item that it is in; never while pictures are drawn, so that nothing is drawn
// highlighted.
HoverHandler {
    signal hoverChanged(bool isOver)

    enabled: !Environment.isSnapshot
    onHoveredChanged: hoverChanged(hovered)
}
