import QtQuick
import CorvidKit
import Tessel

// Gives a rule to an application that runs, or to one chosen from all that are installed.
Pressable {
    id: button

    required property MenuState appState

    implicitWidth: content.width + 12
    implicitHeight: 22
    title: qsTranslate("Tessel", "Add app")
    ringRadius: 8
    Accessible.role: Accessible.ButtonMenu
    Keys.onDownPressed: menu.open(button)
    Keys.onUpPressed: menu.open(button)
    onPressed: menu.open(button)

    RoundedRectangle {
        anchors.fill: parent
        z: -1
        radius: Style.controlRadius
        visible: button.isHovered || menu.isOpen
        color: Style.hoverFill
    }
    Row {
        id: content
        anchors.left: parent.left
        anchors.leftMargin: 4
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        spacing: 10

        // Where the rows above it have their icons.
        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: 20
            height: 20
            name: "plus"
            size: 11.5
            color: Style.secondary
        }
        Label {
            anchors.baseline: parent.verticalCenter
            anchors.baselineOffset: rise
            text: button.title
            size: 11.5
            color: Style.secondary
            Accessible.ignored: true
        }
    }
    PopupMenu {
        id: menu
        title: button.title
        onAboutToOpen: {
            const running = button.appState.addableRunningApps().map(app => ({
                        title: app.title,
                        icon: app.icon,
                        action: () => button.appState.addRunningApp(app.bundleID)
                    }));
            const heading = running.length > 0 ? [
                {
                    section: qsTranslate("Tessel", "Open apps")
                }
            ] : [];
            const divider = running.length > 0 ? [
                {
                    isDivider: true
                }
            ] : [];
            entries = heading.concat(running, divider, [
                {
                    title: qsTranslate("Tessel", "Choose from Applications…"),
                    action: () => button.appState.chooseApp()
                }
            ]);
        }
    }
}
