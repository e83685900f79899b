import QtQuick
import CorvidKit

// One action and its shortcut.
Item {
    id: row

    property string symbol
    property string title
    property list<string> keys
    property string spokenKeys
    // The text about the shortcut's holder; empty while the shortcut is ours.
    property string taken
    readonly property bool isTaken: taken !== ""
    // Where the title ends, from the row's leading edge.
    readonly property real titleEnd: 40 + label.width
    // Where the tip has its place.
    property Item tipArea: null

    implicitHeight: 40

    ActionIcon {
        id: icon
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.symbol
    }
    Label {
        id: label
        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        // As much as icon, keys and sign leave, with the gaps beside them.
        width: Math.min(implicitWidth, row.width - icon.width - caps.width - 40 - (row.isTaken ? sign.width + 6 : 0))
        text: row.title
        size: 12
    }
    Symbol {
        id: sign
        property bool isHovered: false

        visible: row.isTaken
        anchors.left: label.right
        anchors.leftMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        name: "exclamationmark.triangle.fill"
        size: 10
        color: Style.orange
        Accessible.ignored: !row.isTaken
        Accessible.role: Accessible.Graphic
        Accessible.name: tip.text

        TrackingHover {
            onHoverChanged: isOver => sign.isHovered = isOver
        }
        ToolTip {
            id: tip
            control: sign
            area: row.tipArea
            text: row.taken
        }
    }
    KeyCaps {
        id: caps
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        keys: row.keys
        spoken: row.spokenKeys
    }
}
