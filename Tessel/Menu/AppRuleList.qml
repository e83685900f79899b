import QtQuick
import CorvidKit
import Tessel

// The rows of the rules; the list creates them as they become visible.
ListView {
    id: list

    required property MenuState appState

    model: list.appState.ruleApps
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    keyNavigationEnabled: false
    Accessible.role: Accessible.List
    Accessible.name: qsTranslate("Tessel", "When these apps open")

    delegate: AppRuleRow {
        width: list.width
        appState: list.appState
        onFocused: list.positionViewAtIndex(index, ListView.Contain)
        onChanged: action => action === "" ? list.appState.removeRule(bundleID) : list.appState.setRule(bundleID, action)
    }

    ScrollMark {
        list: list
    }
}
