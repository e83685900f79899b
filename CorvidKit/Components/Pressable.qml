import QtQuick
import CorvidKit

// The common part of all buttons: pointer, keyboard, focus and accessibility.
Item {
    id: pressable

    property string title
    property string help
    property bool isPressed: area.pressed && area.containsMouse
    property bool isHovered: false
    property real ringRadius: 8
    property alias hasRing: ring.isWanted

    signal pressed

    activeFocusOnTab: true
    Accessible.role: Accessible.Button
    Accessible.name: title
    Accessible.description: help
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: pressable.pressed()
    Keys.onSpacePressed: pressable.pressed()
    Keys.onReturnPressed: pressable.pressed()
    Keys.onEnterPressed: pressable.pressed()

    TrackingHover {
        onHoverChanged: isOver => pressable.isHovered = isOver
    }
    MouseArea {
        id: area
        anchors.fill: parent
        onPressed: Environment.isUsingKeyboard = false
        onClicked: {
            pressable.forceActiveFocus(Qt.MouseFocusReason);
            pressable.pressed();
        }
    }
    FocusRing {
        id: ring
        property bool isWanted: true
        control: pressable
        radius: pressable.ringRadius
        visible: isWanted && control.activeFocus && Environment.isUsingKeyboard && !Environment.isSnapshot
    }
}
