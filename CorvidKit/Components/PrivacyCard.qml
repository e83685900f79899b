import QtQuick
import CorvidKit

// The program's promises about privacy.
Card {
    id: card

    default property alias items: column.data

    padding: 0
    implicitHeight: Math.ceil(column.height) + 20

    contentItem.children: [
        SymbolItem {
            id: shield
            x: card.LayoutMirroring.enabled ? card.width - width - 11 : 11
            y: Math.round((card.height - height) / 2)
            width: Style.symbolSide(18)
            height: width
            name: "lock.shield.fill"
            color: Style.lighter(Style.green)
            endColor: Style.green
            Accessible.ignored: true
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
