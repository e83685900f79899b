import QtQuick
import CorvidKit
import Tessel

// What each shortcut does.
Card {
    id: card

    required property MenuState appState
    readonly property real titlesEnd: {
        let end = 0;
        for (let index = 0; index < entries.count; ++index)
            end = Math.max(end, entries.itemAt(index)?.titleEnd ?? 0);
        return end;
    }

    // A tip about a row covers keys, but no title.
    Item {
        id: besideTitles
        anchors.right: parent.right
        anchors.rightMargin: 4
        width: Math.max(120, parent.width - 4 - card.titlesEnd - 6)
    }

    Column {
        width: parent.width

        Repeater {
            id: entries
            model: card.appState.actions

            Column {
                id: entry
                required property var modelData
                required property int index
                readonly property real titleEnd: row.titleEnd

                width: parent.width

                Divider {
                    visible: entry.index > 0
                    x: entry.LayoutMirroring.enabled ? 1 : 40
                    width: parent.width - 41
                }
                ShortcutRow {
                    id: row
                    tipArea: besideTitles
                    width: parent.width
                    symbol: entry.modelData.symbol
                    title: entry.modelData.title
                    keys: entry.modelData.keys
                    spokenKeys: entry.modelData.spokenKeys
                    taken: card.appState.takenShortcuts[entry.modelData.id] ?? ""
                }
            }
        }
    }
}
