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
            anchors.margins: 8
            anchors.verticalCenter: parent.verticalCenter
            text: footer.caption !== "" ? footer.caption : footer.canCheckForUpdates ? "" : footer.versionText
            size: 12
            color: Style.tertiary
        }
    }
    FooterRow {
        visible: footer.canCheckForUpdates
        width: parent.width
        title: qsTranslate("CorvidKit", "Check for Updates")
        detail: footer.versionText
        onPressed: footer.checkForUpdates()
    }
    FooterRow {
        width: parent.width
        title: qsTranslate("CorvidKit", "Quit")
        detail: "⌘Q"
        detailIsKeys: true
        onPressed: footer.quit()
    }
    // As it is written, and as it is called on this desktop.
    Shortcut {
        sequences: ["Meta+Q", "Ctrl+Q"]
        onActivated: footer.quit()
    }
}
