import QtQuick
import CorvidKit

// The lines of a menu.
ListView {
    id: list

    required property Item menu
    // As wide as the widest line wants to be.
    property real widest: {
        let width = 0;
        for (let index = 0; index < measures.count; ++index)
            width = Math.max(width, measures.itemAt(index)?.implicitWidth ?? 0);
        // A line's margins, its picture and its check mark, with the gaps between.
        return Math.ceil(width) + 51;
    }

    // The last position of the pointer; null before the first.
    property var pointer: null

    // To the line that the pointer is on. One that rests while the keys move the lines below it chooses nothing.
    function follow(index, place) {
        const hasMoved = pointer !== null && (pointer.x !== place.x || pointer.y !== place.y);
        pointer = place;
        if (hasMoved || !Environment.isUsingKeyboard)
            currentIndex = index;
    }

    // To the next line that can be chosen.
    function move(step) {
        const count = menu.entries.length;
        for (let index = currentIndex < 0 && step < 0 ? count : currentIndex, tries = 0; tries < count; ++tries) {
            index = (index + step + count) % count;
            if (menu.isEntry(menu.entries[index])) {
                currentIndex = index;
                return;
            }
        }
    }

    function moveToEnd(step) {
        currentIndex = step > 0 ? -1 : menu.entries.length;
        move(step);
    }

    model: menu.entries
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    highlightMoveDuration: 0
    keyNavigationEnabled: false
    contentHeight: {
        let height = 0;
        for (const entry of menu.entries)
            height += lineHeight(entry);
        return height;
    }

    function lineHeight(entry) {
        return entry.isDivider ? 9 : entry.section !== undefined ? 22 : 24;
    }

    Accessible.role: Accessible.PopupMenu
    Accessible.name: menu.title
    Keys.onDownPressed: move(1)
    Keys.onUpPressed: move(-1)
    Keys.onEscapePressed: menu.close()
    Keys.onTabPressed: menu.close()
    Keys.onBacktabPressed: menu.close()
    Keys.onSpacePressed: menu.choose(currentIndex)
    Keys.onReturnPressed: menu.choose(currentIndex)
    Keys.onEnterPressed: menu.choose(currentIndex)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
            moveToEnd(event.key === Qt.Key_Home ? 1 : -1);
            event.accepted = true;
        }
    }

    delegate: MenuLine {
        menu: list.menu
        width: list.width
        height: list.lineHeight(modelData)
        isCurrent: ListView.isCurrentItem
        onPointedAt: place => list.follow(index, place)
    }

    Repeater {
        id: measures
        model: list.menu.isOpen ? [] : list.menu.entries

        Label {
            required property var modelData

            visible: false
            size: modelData.section !== undefined ? 10.5 : 12
            weight: modelData.section !== undefined ? Font.DemiBold : Font.Normal
            text: modelData.section ?? modelData.title ?? ""
            Accessible.ignored: true
        }
    }
}
