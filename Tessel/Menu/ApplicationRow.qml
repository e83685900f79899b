import QtQuick
import CorvidKit

// One application in the list, with the action of its rule and a mark if it is chosen.
Item {
    id: row

    required property int index
    required property string name
    required property string icon
    required property bool isChosen
    required property string rule
    property bool isCurrent
    property bool hasKeyboard

    signal chosen
    signal confirmed

    implicitHeight: 32
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    Accessible.description: rule
    Accessible.checkable: true
    Accessible.checked: isChosen
    Accessible.selectable: true
    Accessible.selected: isCurrent
    Accessible.onPressAction: chosen()
    Accessible.onToggleAction: chosen()

    RoundedRectangle {
        anchors.fill: parent
        radius: Style.rowRadius
        visible: row.isCurrent && row.hasKeyboard || hover.hovered
        color: row.isCurrent && row.hasKeyboard ? Style.pressedFill : Style.hoverFill
    }
    ApplicationIcon {
        id: picture
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        source: row.icon
    }
    Label {
        anchors.left: picture.right
        anchors.leftMargin: 10
        anchors.right: action.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: row.name
        size: 12.5
        Accessible.ignored: true
    }
    Label {
        id: action
        anchors.right: mark.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: row.rule
        size: 11
        color: Style.secondary
        Accessible.ignored: true
    }
    Symbol {
        id: mark
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 13
        visible: row.isChosen
        color: Environment.appBrand.accent
    }
    HoverHandler {
        id: hover
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.chosen()
        onDoubleClicked: row.confirmed()
    }
}
