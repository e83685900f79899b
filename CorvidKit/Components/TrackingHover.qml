import QtQuick
import CorvidKit

// Whether the pointer is over its item; never while pictures are drawn, so that nothing is drawn highlighted.
HoverHandler {
    signal hoverChanged(bool isOver)

    enabled: !Environment.isSnapshot
    onHoveredChanged: hoverChanged(hovered)
}
