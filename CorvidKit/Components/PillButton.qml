import QtQuick
import CorvidKit

// A small rounded button: `isProminent` in the brand's colour, `isBordered` as a button among text.
Pressable {
    id: pill

    property bool isProminent: false
    property bool isBordered: false

    implicitWidth: label.implicitWidth + 22
    implicitHeight: 22
    ringRadius: isBordered ? 8 : 13

    RoundedRectangle {
        readonly property real darker: pill.isPressed ? 0.12 : 0

        anchors.fill: parent
        z: -1
        radius: pill.isBordered ? Style.controlRadius : height / 2
        color: pill.isProminent ? Style.underText(Environment.appBrand.accent, 0.14 + darker) : pill.isPressed ? Style.pressedFill
             : pill.isBordered ? Style.cap : pill.isHovered ? Style.hoverFill : Style.fill
        endColor: pill.isProminent ? Style.underText(Environment.appBrand.accent, 0.22 + darker) : "transparent"
        borderColor: pill.isBordered ? Style.capBorder : "transparent"
        borderWidth: pill.isBordered ? Style.hairline : 0
    }
    Label {
        id: label
        anchors.horizontalCenter: parent.horizontalCenter
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        width: Math.min(implicitWidth, pill.width - 12)
        text: pill.title
        size: 11
        weight: Font.DemiBold
        color: pill.isProminent ? "white" : Style.primary
        Accessible.ignored: true
    }
}
