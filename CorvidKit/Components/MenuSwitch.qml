import QtQuick
import CorvidKit

// An on/off switch. What it shows is what it is given: a change is asked for with `toggled`, and shown once it holds.
Item {
    id: menuSwitch

    enum Size {
        Regular,
        Mini
    }

    property bool isOn
    property int size: MenuSwitch.Regular
    property string title
    property string help
    property bool isHovered: false
    readonly property bool isMini: size === MenuSwitch.Mini

    signal toggled(bool isOn)

    function toggle() {
        toggled(!isOn);
    }

    implicitWidth: isMini ? 26 : 32
    implicitHeight: isMini ? 15 : 18
    activeFocusOnTab: true
    Accessible.role: Accessible.CheckBox
    Accessible.name: title
    Accessible.description: help
    Accessible.checkable: true
    Accessible.checked: isOn
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onToggleAction: toggle()
    Accessible.onPressAction: toggle()
    Keys.onSpacePressed: toggle()
    Keys.onReturnPressed: toggle()
    Keys.onEnterPressed: toggle()

    RoundedRectangle {
        id: track
        anchors.fill: parent
        radius: height / 2
        color: menuSwitch.isOn ? Environment.appBrand.accent : Qt.alpha(Style.primary, 0.15)
        // The track is faint while it is off.
        borderColor: menuSwitch.isOn || Environment.isSnapshot ? "transparent" : Style.grey
        borderWidth: Style.hairline
    }
    Item {
        id: knob
        readonly property real inset: 1.5

        width: height
        height: parent.height - 2 * inset
        x: menuSwitch.isOn !== menuSwitch.LayoutMirroring.enabled ? parent.width - width - inset : inset
        y: inset

        SoftShadow {
            anchors.fill: parent
            anchors.margins: -blur
            anchors.topMargin: -blur + 0.5
            anchors.bottomMargin: -blur - 0.5
            radius: parent.width / 2
            blur: 1
            color: "#33000000"
        }
        RoundedRectangle {
            anchors.fill: parent
            isContinuous: false
            radius: width / 2
            color: "white"
            borderColor: track.borderColor
            borderWidth: Style.hairline
        }
        Behavior on x {
            enabled: Style.transition > 0
            NumberAnimation {
                duration: Style.transition
                easing.type: Easing.OutCubic
            }
        }
    }
    TrackingHover {
        onHoverChanged: isOver => menuSwitch.isHovered = isOver
    }
    MouseArea {
        anchors.fill: parent
        anchors.margins: -4
        onPressed: Environment.isUsingKeyboard = false
        onClicked: {
            menuSwitch.forceActiveFocus(Qt.MouseFocusReason);
            menuSwitch.toggle();
        }
    }
    FocusRing {
        control: menuSwitch
        radius: height / 2
    }
}
