import QtQuick
import CorvidKit

// One clickable line at the bottom.
Pressable {
    id: row

    property string detail
    property bool detailIsKeys: false
    property string shortcut

    implicitHeight: 26
    ringRadius: 7
    help: detail

    RoundedRectangle {
        anchors.fill: parent
        z: -1
        radius: Style.rowRadius
        visible: row.isHovered
        color: row.isPressed ? Style.pressedFill : Style.hoverFill
    }
    Label {
        id: label
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.right: trailing.left
        anchors.rightMargin: 8
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: row.title
        size: 12
        Accessible.ignored: true
    }
    Row {
        id: trailing
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        spacing: 8

        Label {
            anchors.baseline: parent.verticalCenter
            anchors.baselineOffset: label.rise
            text: row.detail
            font: row.detailIsKeys ? Environment.keyFont(12) : Environment.font(12)
            color: row.isPressed ? Style.secondary : Style.tertiary
            Accessible.ignored: true
        }
        Label {
            anchors.baseline: parent.verticalCenter
            anchors.baselineOffset: label.rise
            visible: row.shortcut !== ""
            text: row.shortcut
            font: Environment.keyFont(12)
            color: row.isPressed ? Style.secondary : Style.tertiary
            Accessible.ignored: true
        }
    }
}
