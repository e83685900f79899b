import QtQuick
import CorvidKit
import Tessel

// The whole interface: what the program does, and everything that can be changed about it.
Item {
    id: view

    required property MenuState appState
    property string tab: "shortcuts"
    readonly property TesselBrand brand: TesselBrand {}

    implicitWidth: 340
    implicitHeight: Math.ceil(stack.height) + 28
    LayoutMirroring.enabled: Environment.isMirrored
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.Pane
    Accessible.name: brand.name
    Component.onCompleted: Environment.appBrand = brand

    // What may have changed while the view was not shown.
    function appear() {
        loginRow.refresh();
        view.appState.lookAgain();
    }

    function statusColor(): color {
        switch (appState.status) {
        case MenuState.Paused:
            return Style.grey;
        case MenuState.Active:
            return Style.green;
        default:
            return Style.orange;
        }
    }

    Column {
        id: stack
        x: 14
        y: 14
        width: parent.width - 28
        spacing: 12

        MenuHeader {
            width: parent.width
            status: view.appState.statusText
            statusColor: view.statusColor()
            isOn: view.appState.isEnabled
            switchHelp: view.appState.isEnabled ? qsTranslate("Tessel", "Turn off") : qsTranslate("Tessel", "Turn on")
            onToggled: isOn => view.appState.isEnabled = isOn
        }
        UpdateReminderCard {
            width: parent.width
            visible: view.appState.updateReminderDue
            onCheck: view.appState.checkForUpdates()
            onNotNow: view.appState.dismissUpdateReminder()
        }
        UpdatedCard {
            width: parent.width
            visible: view.appState.isReplaced
            onAction: view.appState.restart()
        }
        WarningCard {
            width: parent.width
            visible: !view.appState.hasAccessibility
            symbol: "hand.raised.fill"
            title: view.appState.permissionTitle
            message: view.appState.permissionMessage
            button: view.appState.permissionButton
            onAction: view.appState.openAccessibilitySettings()
        }
        WarningCard {
            width: parent.width
            visible: message !== ""
            symbol: "keyboard"
            title: qsTranslate("Tessel", "Some shortcuts are taken")
            message: view.appState.lendableShortcuts
            button: qsTranslate("Tessel", "Use for Tessel")
            onAction: view.appState.setBorrowsShortcuts(true)
        }
        TabSwitcher {
            width: parent.width
            selection: view.tab
            onSelected: tab => view.tab = tab
        }
        Item {
            width: parent.width
            height: 245

            ShortcutsCard {
                width: parent.width
                height: parent.height
                visible: view.tab === "shortcuts"
                appState: view.appState
            }
            // Read and made when it is first looked at: it takes as many types of its own as all else together.
            Loader {
                readonly property bool isWanted: view.tab === "apps"

                width: parent.width
                height: parent.height
                visible: isWanted
                onIsWantedChanged: if (isWanted && status === Loader.Null)
                    setSource("AppsCard.qml", {
                        appState: view.appState
                    })
            }
        }
        Card {
            width: parent.width
            visible: view.appState.borrowedCount > 0

            SettingRow {
                width: parent.width
                symbol: "keyboard"
                title: qsTranslate("Tessel", "Borrowed shortcuts: %1").arg(view.appState.borrowedCount)

                PillButton {
                    title: qsTranslate("Tessel", "Give back")
                    isBordered: true
                    onPressed: view.appState.setBorrowsShortcuts(false)
                }
            }
        }
        Card {
            width: parent.width

            OpenAtLoginRow {
                id: loginRow
                width: parent.width
            }
        }
        PrivacyCard {
            width: parent.width

            PrivacyItem {
                symbol: "network.slash"
                text: qsTranslate("Tessel", "No internet connection, no data collected")
            }
            PrivacyItem {
                symbol: "eye.slash.fill"
                text: qsTranslate("Tessel", "Only moves windows, never reads them")
            }
        }
        MenuFooter {
            width: parent.width
            canCheckForUpdates: true
            version: view.appState.version
            onCheckForUpdates: view.appState.checkForUpdates()
            onQuit: view.appState.quit()
        }
    }
}
