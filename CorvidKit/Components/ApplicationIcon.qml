import QtQuick
import CorvidKit

// An application's icon, or the outline of one where it has none that can be found.
Item {
    property alias source: picture.source
    property color color: Style.secondary

    implicitWidth: 20
    implicitHeight: 20
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
