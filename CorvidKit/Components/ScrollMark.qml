import QtQuick
import CorvidKit

// Shows where a list is, and that there is more of it.
RoundedRectangle {
    required property Flickable list
    // What it keeps from the list's ends.
    property real inset: 0

    parent: list
    visible: list.contentHeight > list.height
    x: list.LayoutMirroring.enabled ? 2 : list.width - width - 2
    y: inset + list.visibleArea.yPosition * (list.height - 2 * inset)
    width: 3
    height: Math.max(16, list.visibleArea.heightRatio * (list.height - 2 * inset))
    radius: 1.5
    color: Style.grey
}
