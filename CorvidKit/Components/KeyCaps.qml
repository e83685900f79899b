import QtQuick
import CorvidKit

// A shortcut as a row of key caps.
Row {
    id: caps

    property list<string> keys
    // How the keys are called.
    property string spoken

    spacing: 3
    // The keys of a shortcut are written from left to right in every language.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

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
