import QtQuick
import CorvidKit

// One setting: icon, title, and at the end what changes it.
Item {
    id: row

    property string symbol
    property string title
    default property alias accessory: trailing.data

    implicitHeight: 38

    ActionIcon {
        id: icon
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.symbol
        size: 20
    }
    Label {
        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.right: trailing.left
        anchors.rightMargin: 10
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: row.title
        size: 12
        maximumLineCount: 1
    }
    Item {
        id: trailing
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: childrenRect.width
        height: childrenRect.height
    }
}
