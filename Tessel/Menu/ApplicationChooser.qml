import QtQuick
import CorvidKit
import Tessel

// Searches the installed applications.
FocusScope {
    id: chooser

    required property ApplicationList applications
    property bool takesSeveral: true
    property string prompt
    readonly property bool canConfirm: applications.chosenCount > 0 || list.currentItem !== null

    signal confirmed
    signal cancelled

    // The marked application, if none was chosen: typing a name and pressing Enter is enough.
    function confirm() {
        if (applications.chosenCount === 0)
            applications.choose(list.currentIndex);
        if (applications.chosenCount > 0)
            confirmed();
    }

    LayoutMirroring.enabled: Environment.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Dialog
    Accessible.name: qsTranslate("Tessel", "Choose Applications")
    Keys.onEscapePressed: cancelled()

    Rectangle {
        anchors.fill: parent
        color: Style.window
    }
    SearchField {
        id: field
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.margins: 14
        focus: true
        placeholder: qsTranslate("Tessel", "Search applications")
        onEdited: text => {
            chooser.applications.searchText = text;
            list.currentIndex = 0;
            list.positionViewAtBeginning();
        }
        onAccepted: chooser.confirm()
        onMoved: step => list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + step))
    }
    Card {
        id: card

        readonly property real room: chooser.height - y - buttons.height - 28
        readonly property real around: 4

        // As high as the window allows, in whole rows.
        height: list.heightOfRows(room - 2 * around) + 2 * around
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: field.bottom
        anchors.margins: 14
        anchors.topMargin: 10

        Label {
            anchors.centerIn: parent
            visible: list.count === 0
            text: qsTranslate("Tessel", "No matching applications")
            size: 12
            color: Style.secondary
        }
        RowList {
            id: list
            anchors.fill: parent
            anchors.topMargin: card.around
            anchors.bottomMargin: card.around
            rowHeight: 32
            model: chooser.applications
            activeFocusOnTab: true
            keyNavigationEnabled: true
            Accessible.role: Accessible.List
            Accessible.name: qsTranslate("Tessel", "Choose Applications")
            onCurrentIndexChanged: reveal(currentIndex)
            Keys.onSpacePressed: chooser.applications.toggle(currentIndex)
            Keys.onReturnPressed: chooser.confirm()
            Keys.onEnterPressed: chooser.confirm()

            delegate: ApplicationRow {
                width: list.width
                height: list.rowHeight
                isCurrent: ListView.isCurrentItem
                hasKeyboard: list.activeFocus || field.activeFocus
                onChosen: {
                    list.currentIndex = index;
                    chooser.applications.toggle(index);
                }
                onConfirmed: {
                    chooser.applications.choose(index);
                    chooser.confirm();
                }
            }
        }
    }
    Row {
        id: buttons
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        anchors.margins: 14
        spacing: 8

        PillButton {
            implicitHeight: 26
            title: qsTranslate("Tessel", "Cancel")
            isBordered: true
            onPressed: chooser.cancelled()
        }
        PillButton {
            implicitHeight: 26
            title: chooser.prompt
            isBordered: true
            isProminent: true
            enabled: chooser.canConfirm
            opacity: enabled ? 1 : 0.45
            onPressed: chooser.confirm()
        }
    }
}
