import QtQuick
import CorvidKit
import Tessel

// One application and what happens to its first window.
Item {
    id: row

    required property MenuState appState
    required property int index
    required property string bundleID
    required property string name
    required property string icon
    required property string actionID
    property bool hovering: false
    readonly property var action: appState.ruleActions.find(action => action.id === actionID) ?? appState.actions.find(action => action.id === actionID)

    // Another action, or none ("") to take the rule away.
    signal changed(string action)
    signal focused

    implicitHeight: 30
    Accessible.role: Accessible.ListItem
    Accessible.name: name
    // A row that is gone is kept for another application.
    ListView.onPooled: picker.menu.close()

    TrackingHover {
        onHoverChanged: isOver => row.hovering = isOver
    }
    RoundedRectangle {
        anchors.fill: parent
        // Beside it is the mark of a list that can be scrolled.
        anchors.leftMargin: 6
        anchors.rightMargin: 6
        radius: Style.rowRadius
        visible: row.hovering
        color: Style.fill
    }
    ApplicationIcon {
        id: picture
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        source: row.icon
    }
    Label {
        anchors.left: picture.right
        anchors.leftMargin: 10
        anchors.right: picker.left
        anchors.rightMargin: 8
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        text: row.name
        size: 12
        maximumLineCount: 1
    }
    MenuPicker {
        id: picker
        anchors.right: parent.right
        // Four more are the picker's own, beside what it shows.
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        title: row.action?.title ?? ""
        symbol: row.action?.symbol ?? ""
        purpose: qsTranslate("Tessel", "Action for %1").arg(row.name)
        menu.title: purpose
        menu.onAboutToOpen: menu.entries = entries()
        onActiveFocusChanged: if (activeFocus) row.focused()

        function entries() {
            const choices = row.appState.ruleActions.map(action => ({
                        title: action.title,
                        symbol: action.symbol,
                        isChecked: action.id === row.actionID,
                        action: () => row.changed(action.id)
                    }));
            return choices.concat([
                {
                    isDivider: true
                },
                {
                    title: qsTranslate("Tessel", "Remove"),
                    symbol: "minus.circle",
                    action: () => row.changed("")
                }
            ]);
        }
    }
}
