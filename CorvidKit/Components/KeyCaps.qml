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
                id: cap
                required property string modelData
                readonly property rect ink: Environment.inkOf(modelData, text.font)
                // Letters keep to one line from cap to cap; a sign is centred as it is drawn.
                readonly property bool isWord: /^[\p{L}\p{N}]/u.test(modelData)

                width: Math.max(20, 2 * Math.ceil(ink.width / 2) + 10)
                height: 20
                radius: 5
                color: Style.cap
                borderColor: Style.capBorder
                borderWidth: Style.hairline

                Label {
                    id: text
                    x: (cap.width - cap.ink.width) / 2 - cap.ink.x
                    y: cap.height / 2 - baselineOffset + (cap.isWord ? rise : -cap.ink.y - cap.ink.height / 2)
                    text: cap.modelData
                    font: Environment.keyFont(11, Font.Medium)
                    color: Style.secondary
                    Accessible.ignored: true
                }
            }
        }
    }
}
