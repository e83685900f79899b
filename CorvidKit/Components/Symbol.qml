import QtQuick
import CorvidKit

// A symbol as large as it stands beside text of `size`, in the middle of its item.
SymbolItem {
    property real size: 12

    side: Style.symbolScale * size
    implicitWidth: Style.symbolSide(size)
    implicitHeight: implicitWidth
    // In the very middle of what it is centred in, be that between two points.
    anchors.alignWhenCentered: false
    Accessible.ignored: true
}
