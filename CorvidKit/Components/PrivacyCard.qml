import QtQuick
import CorvidKit

// What the program does not do.
Card {
    id: card

    default property alias items: column.data

    padding: 0
    implicitHeight: Math.ceil(column.height) + 20

    contentItem.children: [
        Item {
            id: shield
            anchors.left: parent.left
            anchors.leftMargin: 10
            anchors.verticalCenter: parent.verticalCenter
            // As wide as the icons above it; the drawing's square is larger, and empty at its sides.
            width: 20
            height: 24

            Symbol {
                anchors.centerIn: parent
                width: 24
                height: 24
                size: 18
                name: "lock.shield.fill"
                color: Style.lighter(Style.green)
                endColor: Style.green
            }
        },
        Column {
            id: column
            anchors.left: shield.right
            anchors.leftMargin: 10
            anchors.right: parent.right
            anchors.rightMargin: 10
            y: 10
            spacing: 5

            Label {
                width: parent.width
                text: qsTranslate("CorvidKit", "Private by design")
                size: 12.5
                weight: Font.DemiBold
            }
        }
    ]
}
