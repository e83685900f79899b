import QtQuick
import CorvidKit

// The last rows: a caption or the version, the way to newer versions, and the end.
Column {
    id: footer

    // Shown in place of the version; empty for none.
    property string caption
    property bool canCheckForUpdates: false
    property string version
    readonly property string versionText: qsTranslate("CorvidKit", "Version %1").arg(version)

    signal checkForUpdates
    signal quit

    Item {
        visible: captionText.text !== ""
        width: parent.width
        height: visible ? Math.max(26, captionText.height) : 0

        Label {
            id: captionText
            anchors.left: parent.left
            anchors.right: parent.right
            anchors.margins: 10
            anchors.verticalCenter: parent.verticalCenter
            text: footer.caption !== "" ? footer.caption : footer.canCheckForUpdates ? "" : footer.versionText
            size: 12
            color: Style.tertiary
        }
    }
    // The rows' texts begin and end below those of the cards.
    FooterRow {
        visible: footer.canCheckForUpdates
        x: 2
        width: parent.width - 4
        title: qsTranslate("CorvidKit", "Check for Updates")
        detail: footer.versionText
        onPressed: footer.checkForUpdates()
    }
    FooterRow {
        x: 2
        width: parent.width - 4
        title: qsTranslate("CorvidKit", "Quit")
        // Pictures show the shortcut's own signs; the popover what is printed on the user's keys.
        detail: Environment.isSnapshot ? "⌘Q" : qsTranslate("CorvidKit", "Ctrl+Q")
        detailIsKeys: Environment.isSnapshot
        onPressed: footer.quit()
    }
    // As it is written, and as it is called on this desktop.
    Shortcut {
        sequences: ["Meta+Q", "Ctrl+Q"]
        onActivated: footer.quit()
    }
}
