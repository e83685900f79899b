import QtQuick
import CorvidKit

// A small rounded square in the brand's colour with a white symbol.
RoundedRectangle {
    id: icon

    property string symbol
    property real size: 20

    implicitWidth: size
    implicitHeight: size
    radius: size * 0.27
    color: Style.lighter(Environment.appBrand.accent)
    endColor: Environment.appBrand.accent
    Accessible.ignored: true

    Symbol {
        anchors.fill: parent
        name: icon.symbol
        size: 0.53 * icon.size
        color: "white"
    }
}
