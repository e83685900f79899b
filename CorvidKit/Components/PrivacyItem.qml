import QtQuick
import CorvidKit

// One line of the privacy card.
Item {
    id: item

    property string symbol
    property string text

    width: parent ? parent.width : implicitWidth
    implicitHeight: label.height

    Item {
        id: column
        anchors.left: parent.left
        // Beside the first line.
        y: label.baselineOffset - label.rise - height / 2
        width: 15
        height: 16

        Symbol {
            anchors.centerIn: parent
            name: item.symbol
            size: 10
            color: Style.green
        }
    }
    Label {
        id: label
        anchors.left: column.right
        anchors.leftMargin: 7
        anchors.right: parent.right
        text: item.text
        size: 11
        color: Style.secondary
        wrapMode: Text.Wrap
    }
}
