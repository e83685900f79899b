import QtQuick
import CorvidKit

// What is missing, and one button that leads to where it can be had, if there is such a place.
RoundedRectangle {
    id: card

    property string symbol
    property string title
    property string message
    property string button: qsTranslate("CorvidKit", "Open System Settings")

    signal action

    implicitHeight: Math.ceil(texts.height) + 20
    radius: Style.cardRadius
    color: Style.warningFill
    borderColor: Style.warningBorder
    borderWidth: Style.hairline
    Accessible.role: Accessible.AlertMessage
    Accessible.name: title
    Accessible.description: message

    Item {
        id: column
        anchors.left: parent.left
        anchors.leftMargin: 9
        // Beside the title's first line.
        y: texts.y + heading.baselineOffset - heading.rise - height / 2
        width: 22
        height: 20

        Symbol {
            anchors.centerIn: parent
            name: card.symbol
            size: 15
            color: Style.orange
        }
    }
    Column {
        id: texts
        anchors.left: column.right
        anchors.leftMargin: 9
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.top: parent.top
        anchors.topMargin: 11
        spacing: 4

        Label {
            id: heading
            width: parent.width
            text: card.title
            size: 12.5
            weight: Font.DemiBold
            wrapMode: Text.Wrap
        }
        Label {
            width: parent.width
            text: card.message
            size: 11
            color: Style.secondary
            wrapMode: Text.Wrap
            lineHeight: 1.08
        }
        Item {
            visible: card.button !== ""
            width: 1
            height: 2
        }
        PillButton {
            visible: card.button !== ""
            anchors.left: parent.left
            title: card.button
            isBordered: true
            onPressed: card.action()
        }
    }
}
