import QtQuick
import CorvidKit
import Tessel

// The rows of the rules; as many as there are, a few at a time.
ListView {
    id: list

    required property MenuState appState
    readonly property real rowHeight: 30

    // How much of that room it takes. Where there are more rows than fit, the next one peeks out with the top of its icon,
    // and no row is cut through its letters.
    function heightIn(room: real): real {
        const peek = 8;
        return count * rowHeight <= room ? room : Math.floor((room - peek) / rowHeight) * rowHeight + peek;
    }

    model: list.appState.ruleApps
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    reuseItems: true
    keyNavigationEnabled: false
    Accessible.role: Accessible.List
    Accessible.name: qsTranslate("Tessel", "When these apps open")

    delegate: AppRuleRow {
        width: list.width
        height: list.rowHeight
        appState: list.appState
        onFocused: list.positionViewAtIndex(index, ListView.Contain)
        onChanged: action => action === "" ? list.appState.removeRule(bundleID) : list.appState.setRule(bundleID, action)
    }

    ScrollMark {
        list: list
    }
}
