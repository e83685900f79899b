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
        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.right: trailing.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        size: 12
        Accessible.ignored: true
    }
    Row {
        id: trailing
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Label {
            text: row.detail
            font: row.detailIsKeys ? Environment.keyFont(12) : Environment.font(12)
            color: Style.tertiary
            Accessible.ignored: true
        }
        Label {
            visible: row.shortcut !== ""
            text: row.shortcut
            font: Environment.keyFont(12)
            color: Style.tertiary
            Accessible.ignored: true
        }
    }
}
