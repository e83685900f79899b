import QtQuick
import CorvidKit

// A shortcut as a row of key caps.
Item {
    id: caps

    property list<string> keys
    // How the keys are called.
    property string spoken

    implicitWidth: row.width
    implicitHeight: row.height
    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

    Row {
        id: row
        spacing: 3
        // The keys of a shortcut are written from left to right in every language.
        LayoutMirroring.enabled: false
        LayoutMirroring.childrenInherit: true

        Repeater {
            model: caps.keys

            RoundedRectangle {
                required property string modelData

                width: Math.max(20, Math.ceil(text.implicitWidth) + 8)
                height: 20
                radius: 5
                color: Style.cap
                borderColor: Style.capBorder
                borderWidth: Style.hairline

                Label {
                    id: text
                    anchors.centerIn: parent
                    text: parent.modelData
                    font: Environment.keyFont(11, Font.Medium)
                    color: Style.secondary
                    Accessible.ignored: true
                }
            }
        }
    }
}
