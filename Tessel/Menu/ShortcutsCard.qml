import QtQuick
import CorvidKit
import Tessel

// The six shortcuts with their actions.
Card {
    id: card

    required property MenuState appState

    Column {
        width: parent.width

        Repeater {
            model: card.appState.actions

            Column {
                id: entry
                required property var modelData
                required property int index

                width: parent.width

                Divider {
                    visible: entry.index > 0
                    x: entry.LayoutMirroring.enabled ? 1 : 40
                    width: parent.width - 41
                }
                ShortcutRow {
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
