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
    property bool isHovered: false
    // Enter takes this one.
    readonly property bool isMarked: isCurrent && hasKeyboard

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
        // Beside it is the mark of a list that can be scrolled.
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        radius: Style.rowRadius
        visible: row.isMarked || row.isHovered
        color: row.isMarked ? Style.underText(Environment.appBrand.accent, 0.14) : Style.hoverFill
    }
    ApplicationIcon {
        id: picture
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        source: row.icon
        color: row.isMarked ? "white" : Style.secondary
    }
    Label {
        anchors.left: picture.right
        anchors.leftMargin: 10
        anchors.right: action.left
        anchors.rightMargin: 8
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: row.name
        size: 12.5
        color: row.isMarked ? "white" : Style.primary
        Accessible.ignored: true
    }
    Label {
        id: action
        anchors.right: mark.left
        anchors.rightMargin: 8
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: row.rule
        size: 11
        color: row.isMarked ? "white" : Style.secondary
        Accessible.ignored: true
    }
    Symbol {
        id: mark
        anchors.right: parent.right
        // The drawing ends a point within its square.
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        name: "checkmark.circle.fill"
        size: 13
        visible: row.isChosen
        color: row.isMarked ? "white" : Style.brandMark(Environment.appBrand.accent)
    }
    TrackingHover {
        onHoverChanged: isOver => row.isHovered = isOver
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.chosen()
        onDoubleClicked: row.confirmed()
    }
}
