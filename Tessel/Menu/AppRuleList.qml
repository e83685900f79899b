import QtQuick
import CorvidKit
import Tessel

// The rows of the rules; the list creates them as they become visible.
RowList {
    id: list

    required property MenuState appState

    // How much of that room it takes.
    function heightIn(room: real): real {
        return count * rowHeight <= room ? room : heightOfRows(room);
    }

    model: list.appState.ruleApps
    keyNavigationEnabled: false
    Accessible.role: Accessible.List
    Accessible.name: qsTranslate("Tessel", "When these apps open")

    delegate: AppRuleRow {
        width: list.width
        height: list.rowHeight
        appState: list.appState
        onFocused: list.reveal(index)
        onChanged: action => action === "" ? list.appState.removeRule(bundleID) : list.appState.setRule(bundleID, action)
    }
}
