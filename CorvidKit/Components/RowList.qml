import QtQuick
import CorvidKit

// A list of rows of one height. At rest it begins with a whole row, and the next row after the last whole one peeks out
// with the top of its icon: no row is cut through its letters. While it moves, the rows fade at the edges.
ListView {
    id: list

    property real rowHeight: 30
    // Less than the room above the letters of a row.
    readonly property real peek: 8
    // The surface below the rows.
    property color ground: Style.card
    readonly property bool isScrollable: count * rowHeight > height
    readonly property bool isInMotion: moving || settling.running

    // How much of that room is for rows if there are more of them than fit.
    function heightOfRows(room: real): real {
        return Math.floor((room - peek) / rowHeight) * rowHeight + peek;
    }

    // Scrolls as little as is needed to show the whole row.
    function reveal(index: int): void {
        // Before it has its size, it is too low for any row.
        if (!isScrollable || index < 0 || height < rowHeight + peek)
            return;
        settling.stop();
        const top = originY + index * rowHeight;
        contentY = Math.max(top + rowHeight + peek - height, Math.min(top, contentY));
    }

    // A flick ends at a row by itself; fingers on a touchpad stop anywhere.
    function rest(): void {
        const last = Math.max(0, Math.ceil((count * rowHeight + peek - height) / rowHeight));
        const row = Math.round((contentY - originY) / rowHeight);
        const wanted = originY + Math.max(0, Math.min(row, last)) * rowHeight;
        if (!isScrollable || contentY === wanted)
            return;
        settling.to = wanted;
        settling.restart();
    }

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    snapMode: ListView.SnapToItem
    // At the end, the first row is whole as well.
    bottomMargin: isScrollable ? peek : 0
    reuseItems: true
    highlightFollowsCurrentItem: false
    onMovementEnded: rest()
    onMovementStarted: settling.stop()

    NumberAnimation {
        id: settling
        target: list
        property: "contentY"
        duration: Style.transition
        easing.type: Easing.OutCubic
    }
    EdgeFade {
        list: list
        ground: list.ground
        isShown: list.isInMotion && !list.atYBeginning
    }
    EdgeFade {
        list: list
        ground: list.ground
        isAtEnd: true
        isShown: list.isInMotion && !list.atYEnd
    }
    ScrollMark {
        list: list
    }
}
