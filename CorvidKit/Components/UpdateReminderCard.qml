import QtQuick
import CorvidKit

// Reminds to look for a newer version.
Card {
    id: card

    signal check
    signal notNow

    implicitHeight: Math.ceil(texts.height) + 20

    contentItem.children: [
        Item {
            id: column
            anchors.left: parent.left
            anchors.leftMargin: 9
            // Beside the title's first line.
            y: texts.y + heading.baselineOffset - heading.rise - height / 2
            width: 22
            height: 18

            Symbol {
                anchors.centerIn: parent
                name: "arrow.down.circle.fill"
                size: 16
                color: Style.lighter(Environment.appBrand.accent)
                endColor: Environment.appBrand.accent
            }
        },
        Column {
            id: texts
            anchors.left: column.right
            anchors.leftMargin: 9
            anchors.right: parent.right
            anchors.rightMargin: 10
            y: 10
            spacing: 4

            Label {
                id: heading
                width: parent.width
                text: qsTranslate("CorvidKit", "A new version may be out")
                size: 12.5
                weight: Font.DemiBold
                wrapMode: Text.Wrap
            }
            Label {
                width: parent.width
                text: qsTranslate("CorvidKit", "This app never goes online, so it can't check by itself. Checking on the website takes one click.")
                size: 11
                color: Style.secondary
                wrapMode: Text.Wrap
                lineHeight: 1.08
            }
            Item {
                width: 1
                height: 2
            }
            Row {
                anchors.left: parent.left
                spacing: 8

                PillButton {
                    title: qsTranslate("CorvidKit", "Check")
                    isProminent: true
                    onPressed: card.check()
                }
                PillButton {
                    title: qsTranslate("CorvidKit", "Not Now")
                    onPressed: card.notNow()
                }
            }
        }
    ]
}
