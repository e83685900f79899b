import QtQuick

// The program's icon.
RoundedRectangle {
    id: glyph

    property real size: 40

    implicitWidth: size
    implicitHeight: size
    radius: size * 0.225
    color: Brand.current.gradient[0]
    endColor: Brand.current.gradient[Brand.current.gradient.length - 1]
    Accessible.ignored: true

    Symbol {
        anchors.centerIn: parent
        name: Brand.current.symbol
        size: glyph.size * Brand.current.symbolScale
        color: "white"
    }
}
