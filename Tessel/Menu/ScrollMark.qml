import QtQuick
import CorvidKit

// Shows where a list is, and that there is more of it.
RoundedRectangle {
    required property Flickable list

    parent: list
    visible: list.contentHeight > list.height
    x: list.LayoutMirroring.enabled ? 2 : list.width - width - 2
    y: list.visibleArea.yPosition * list.height
    width: 4
    height: Math.max(16, list.visibleArea.heightRatio * list.height)
    radius: 2
    color: Style.tertiary
    opacity: 0.6
}
