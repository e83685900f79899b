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
    borderColor: Qt.alpha(Environment.appBrand.accent, 0.65)
    radius: 8
}
