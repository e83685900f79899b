import QtQuick
import CorvidKit

// Whether the program starts when the user logs in.
SettingRow {
    id: row

    // Read once the row is there, and after each change; not while pictures are drawn.
    property bool isOn: Environment.isSnapshot ? false : LoginItem.isEnabled()

    // The setting may have been changed elsewhere.
    function refresh() {
        if (!Environment.isSnapshot)
            isOn = LoginItem.isEnabled();
    }

    symbol: "power"
    title: qsTranslate("CorvidKit", "Open at login")

    MenuSwitch {
        isOn: row.isOn
        size: MenuSwitch.Mini
        title: row.title
        onToggled: wanted => row.isOn = LoginItem.setEnabled(wanted)
    }
}
