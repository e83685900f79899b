import QtQuick
import CorvidKit

// The two tabs, as one control: the arrow keys go from one to the other.
RoundedRectangle {
    id: switcher

    property string selection
    readonly property var tabs: [
        {
            id: "shortcuts",
            title: qsTranslate("Tessel", "Shortcuts"),
            symbol: "keyboard"
        },
        {
            id: "apps",
            title: qsTranslate("Tessel", "Apps"),
            symbol: "macwindow"
        }
    ]

    signal selected(string tab)

    implicitHeight: 28
    radius: Style.tabRadius + 2
    color: Style.fill
    Accessible.role: Accessible.PageTabList
    Accessible.name: tabs.find(tab => tab.id === selection).title

    Row {
        id: row
        x: 2
        y: 2

        Repeater {
            id: buttons
            model: switcher.tabs

            TabButton {
                required property var modelData
                required property int index

                width: (switcher.width - 4) / 2
                height: 24
                title: modelData.title
                symbol: modelData.symbol
                isSelected: switcher.selection === modelData.id
                onPressed: switcher.selected(modelData.id)
                onMoved: step => {
                    const count = switcher.tabs.length;
                    const next = (index + step + count) % count;
                    // In this order: a focused item cannot leave the order of the Tab key.
                    buttons.itemAt(next).forceActiveFocus(Qt.TabFocusReason);
                    switcher.selected(switcher.tabs[next].id);
                }
            }
        }
    }
}
