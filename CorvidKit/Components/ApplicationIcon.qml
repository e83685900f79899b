import QtQuick
import CorvidKit

// An application's icon, or the outline of one where it has none that can be found.
IconItem {
    id: icon

    implicitWidth: 20
    implicitHeight: 20
    Accessible.ignored: true

    SymbolItem {
        anchors.fill: parent
        visible: icon.isMissing
        name: "app.dashed"
        color: Style.secondary
        Accessible.ignored: true
    }
}
