import QtQuick
import CorvidKit

// One line of a menu: an entry, a heading or a dividing line.
Item {
    id: line

    required property Item menu
    required property var modelData
    required property int index
    property bool isCurrent
    readonly property bool isEntry: menu.isEntry(modelData)
    readonly property bool isHighlighted: isEntry && isCurrent

    // The pointer is there, in the window's coordinates: it has moved, or the line has.
    signal pointedAt(point place)

    Accessible.role: isEntry ? Accessible.MenuItem : modelData.isDivider ? Accessible.Separator : Accessible.Heading
    Accessible.name: modelData.title ?? modelData.section ?? ""
    Accessible.focusable: isEntry
    Accessible.focused: isHighlighted && menu.isOpen
    Accessible.checkable: modelData.isChecked !== undefined
    Accessible.checked: modelData.isChecked === true
    Accessible.onPressAction: menu.choose(index)

    RoundedRectangle {
        anchors.fill: parent
        radius: 5
        visible: line.isHighlighted
        color: Style.underText(Environment.appBrand.accent, 0.14)
    }
    Divider {
        visible: line.modelData.isDivider === true
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 6
        anchors.verticalCenter: parent.verticalCenter
    }
    Item {
        id: picture
        anchors.left: parent.left
        anchors.leftMargin: 7
        anchors.verticalCenter: parent.verticalCenter
        visible: line.modelData.symbol !== undefined || line.modelData.icon !== undefined
        width: visible ? 16 : 0
        height: 16

        Symbol {
            anchors.centerIn: parent
            visible: line.modelData.icon === undefined
            name: line.modelData.symbol ?? ""
            size: 10.5
            color: line.isHighlighted ? "white" : Style.secondary
        }
        ApplicationIcon {
            anchors.fill: parent
            visible: line.modelData.icon !== undefined
            source: line.modelData.icon ?? ""
            color: line.isHighlighted ? "white" : Style.secondary
        }
    }
    Label {
        anchors.left: picture.right
        anchors.leftMargin: picture.visible ? 7 : 0
        anchors.right: check.left
        anchors.rightMargin: 4
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: line.modelData.title ?? line.modelData.section ?? ""
        size: line.isEntry ? 12 : 10.5
        weight: line.isEntry ? Font.Normal : Font.DemiBold
        color: line.isHighlighted ? "white" : line.isEntry ? Style.primary : Style.secondary
        Accessible.ignored: true
    }
    Symbol {
        id: check
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        visible: line.modelData.isChecked === true
        width: visible ? implicitWidth : 0
        name: "checkmark"
        size: 9
        color: line.isHighlighted ? "white" : Style.secondary
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        enabled: line.isEntry
        onEntered: line.pointedAt(mapToItem(null, mouseX, mouseY))
        onPositionChanged: mouse => line.pointedAt(mapToItem(null, mouse.x, mouse.y))
        onClicked: line.menu.choose(line.index)
    }
}
