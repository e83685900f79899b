import QtQuick
import CorvidKit
import Tessel

// The applications that have a rule, and the way to give one to another.
Card {
    id: card

    required property MenuState appState

    Column {
        id: heading
        x: 10
        y: 10
        width: parent.width - 20
        spacing: 2

        Label {
            width: parent.width
            text: qsTranslate("Tessel", "When these apps open")
            size: 12
            Accessible.role: Accessible.Heading
        }
        Label {
            width: parent.width
            text: qsTranslate("Tessel", "Their first window is maximized or centered on the screen it opens on.")
            size: 10.5
            color: Style.secondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }
    Column {
        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.round(rows.y + (rows.height - height) / 2)
        spacing: 6
        visible: rows.count === 0

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "macwindow.badge.plus"
            size: 22
            color: Style.secondary
        }
        Label {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTranslate("Tessel", "No apps yet")
            size: 11.5
            color: Style.secondary
        }
    }
    AppRuleList {
        id: rows
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: heading.bottom
        anchors.topMargin: 3
        height: heightIn(addButton.y - 1 - y)
        visible: count > 0
        appState: card.appState
    }
    AddAppMenu {
        id: addButton
        anchors.left: parent.left
        anchors.leftMargin: 6
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 5
        appState: card.appState
    }
}
