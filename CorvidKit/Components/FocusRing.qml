import QtQuick
import CorvidKit

// Marks the focused item for users of the keyboard.
RoundedRectangle {
    required property Item control

    anchors.fill: control
    anchors.margins: -2
    visible: control.activeFocus && Environment.isUsingKeyboard && !Environment.isSnapshot
    color: "transparent"
    borderWidth: 2
    borderColor: Style.brandMark(Environment.appBrand.accent)
    radius: 8
}
