import QtQuick
import CorvidKit

// The program's icon.
RoundedRectangle {
    id: glyph

    property real size: 40

    implicitWidth: size
    implicitHeight: size
    radius: size * 0.225
    color: Environment.appBrand.gradient[0]
    endColor: Environment.appBrand.gradient[Environment.appBrand.gradient.length - 1]
    Accessible.ignored: true

    Symbol {
        anchors.fill: parent
        name: Environment.appBrand.symbol
        size: glyph.size * Environment.appBrand.symbolScale
        color: "white"
    }
}
