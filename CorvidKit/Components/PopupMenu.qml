import QtQuick
import CorvidKit

// A menu within the window, beside its opener. Its entries are objects with `title`, `symbol` or `icon`, `isChecked`,
// `action`; one with only `section` is a heading, one with `isDivider` a line.
Item {
    id: menu

    property var entries: []
    readonly property bool isOpen: frame.visible
    readonly property bool isWindowShown: menu.Window.visibility !== Window.Hidden
    property Item opener: null
    property string title

    signal aboutToOpen

    // The window is kept while it is hidden, and would come back with an old menu in it.
    onIsWindowShownChanged: if (!isWindowShown) close()

    function open(item) {
        if (isOpen) {
            close();
            return;
        }
        aboutToOpen();
        opener = item;
        frame.place();
        list.currentIndex = -1;
        list.pointer = null;
        frame.visible = true;
        list.forceActiveFocus(Qt.PopupFocusReason);
        if (Environment.isUsingKeyboard)
            list.move(1);
    }

    function close() {
        if (!isOpen)
            return;
        frame.visible = false;
        if (opener && list.activeFocus)
            opener.forceActiveFocus(Qt.PopupFocusReason);
    }

    function choose(index) {
        const entry = entries[index];
        if (!isEntry(entry))
            return;
        close();
        entry.action();
    }

    function isEntry(entry) {
        return entry !== undefined && entry.action !== undefined;
    }

    MouseArea {
        // Takes every press outside, so that it closes the menu and does nothing else.
        parent: menu.Window.contentItem ?? menu
        anchors.fill: parent
        z: 900
        visible: frame.visible
        acceptedButtons: Qt.AllButtons
        onPressed: menu.close()
        onWheel: wheel => wheel.accepted = true
    }
    Item {
        id: frame

        // At the end of the opener where its entries begin, if it fits there, or at the other end. All of it lies on the
        // plate of a popover: what is beyond may be beyond the screen.
        function place() {
            const bounds = Qt.rect(20, 20, parent.width - 40, parent.height - 40);
            height = Math.min(list.contentHeight + 10, bounds.height);
            width = Math.min(Math.max(menu.opener.width, list.widest + 10, 120), bounds.width);
            const below = menu.opener.mapToItem(parent, 0, menu.opener.height + 3);
            const above = menu.opener.mapToItem(parent, 0, -3);
            const starts = [below.x, below.x + menu.opener.width - width];
            if (menu.opener.LayoutMirroring.enabled)
                starts.reverse();
            const last = bounds.x + bounds.width - width;
            const start = starts.find(start => start >= bounds.x && start <= last) ?? starts[1];
            const isRoomBelow = below.y + height <= bounds.y + bounds.height;
            x = Math.round(Math.max(bounds.x, Math.min(start, last)));
            y = Math.round(isRoomBelow ? below.y : Math.max(bounds.y, above.y - height));
        }

        parent: menu.Window.contentItem ?? menu
        z: 901
        visible: false

        SoftShadow {
            anchors.fill: parent
            anchors.margins: -blur
            anchors.topMargin: -blur + 3
            anchors.bottomMargin: -blur - 3
            blur: 10
            radius: 8
            color: Style.shadow
        }
        RoundedRectangle {
            anchors.fill: parent
            radius: 8
            color: Style.menu
            borderColor: Style.menuBorder
            borderWidth: Style.hairline
        }
        MenuList {
            id: list
            anchors.fill: parent
            anchors.margins: 5
            menu: menu
        }
    }
}
