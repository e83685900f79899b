import QtQuick
import CorvidKit

// A symbol as large as it stands beside text of `size`.
SymbolItem {
    property real size: 12

    implicitWidth: Style.symbolSide(size)
    implicitHeight: implicitWidth
    Accessible.ignored: true
}
