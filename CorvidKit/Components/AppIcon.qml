import QtQuick
import CorvidKit

// An application's icon, or what stands for one that has none.
Item {
    property alias source: picture.source
    property color color: Style.secondary

    Accessible.ignored: true

    IconItem {
        id: picture
        anchors.fill: parent
        Accessible.ignored: true
    }
    SymbolItem {
        anchors.fill: parent
        visible: picture.isEmpty
        name: "app.dashed"
        color: parent.color
        Accessible.ignored: true
    }
}
