import QtQuick
import CorvidKit

// A compact picker that opens a menu: the present choice, if it has one its symbol, and the sign of a menu.
Pressable {
    id: picker

    property string symbol
    // The picker's purpose, for users who cannot see the text beside it.
    property string purpose
    property alias menu: popup
    readonly property bool isRaised: isHovered || popup.isOpen

    implicitWidth: content.width + 10
    implicitHeight: 20
    ringRadius: 7
    Accessible.role: Accessible.ButtonMenu
    Accessible.name: purpose !== "" ? purpose : title
    Accessible.description: title
    Keys.onDownPressed: popup.open(picker)
    Keys.onUpPressed: popup.open(picker)
    onPressed: popup.open(picker)

    RoundedRectangle {
        anchors.fill: parent
        z: -1
        radius: Style.controlRadius
        visible: picker.isRaised
        color: Style.hoverFill
    }
    Row {
        id: content
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Symbol {
            visible: picker.symbol !== ""
            anchors.verticalCenter: parent.verticalCenter
            name: picker.symbol
            size: 9
            color: picker.isRaised ? Style.primary : Style.secondary
        }
        Label {
            anchors.baseline: parent.verticalCenter
            anchors.baselineOffset: rise
            text: picker.title
            size: 11
            color: picker.isRaised ? Style.primary : Style.secondary
            Accessible.ignored: true
        }
        Item {
            anchors.verticalCenter: parent.verticalCenter
            // The symbol is narrow and stands in the middle of its square: as wide as to where the drawing ends.
            width: chevron.width - 2
            height: chevron.height

            Symbol {
                id: chevron
                anchors.left: parent.left
                name: "chevron.up.chevron.down"
                size: 8
                color: picker.isRaised ? Style.primary : Style.tertiary
            }
        }
    }
    PopupMenu {
        id: popup
    }
}
