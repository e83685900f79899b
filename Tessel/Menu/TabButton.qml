import QtQuick
import CorvidKit

// One tab: symbol and title; the selected one lies on a plate.
Pressable {
    id: tab

    property string symbol
    property bool isSelected

    // To a neighbour, with an arrow key.
    signal moved(int step)

    ringRadius: Style.tabRadius + 2
    activeFocusOnTab: isSelected
    Accessible.role: Accessible.PageTab
    Accessible.selectable: true
    Accessible.selected: isSelected
    Keys.onLeftPressed: moved(LayoutMirroring.enabled ? 1 : -1)
    Keys.onRightPressed: moved(LayoutMirroring.enabled ? -1 : 1)

    SoftShadow {
        visible: tab.isSelected
        anchors.fill: parent
        anchors.margins: -blur
        anchors.topMargin: -blur + 1
        anchors.bottomMargin: -blur - 1
        z: -2
        blur: 2
        radius: Style.tabRadius
        color: Style.shadow
    }
    RoundedRectangle {
        visible: tab.isSelected
        anchors.fill: parent
        z: -1
        radius: Style.tabRadius
        color: Style.selectedTab
    }
    Row {
        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: tab.symbol
            size: 11.5
            color: label.color
        }
        Label {
            id: label
            anchors.baseline: parent.verticalCenter
            anchors.baselineOffset: rise
            width: Math.min(implicitWidth, tab.width - 36)
            text: tab.title
            size: 11.5
            color: tab.isSelected ? Style.primary : Style.secondary
            Accessible.ignored: true
        }
    }
}
