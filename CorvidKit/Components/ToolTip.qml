import QtQuick
import CorvidKit

// A short text beside the pointer, after it has rested on a control for a while. Drawn within the window, and between the
// sides of `area`, where there is one.
Item {
    id: toolTip

    required property Item control
    property string text
    property Item area: null
    readonly property real widest: area ? area.width - 14 : 220
    readonly property bool isWanted: control.isHovered && text !== "" && !Environment.isSnapshot

    onIsWantedChanged: isWanted ? delay.restart() : hide()

    function hide() {
        delay.stop();
        bubble.active = false;
    }

    Timer {
        id: delay
        interval: 700
        onTriggered: bubble.active = true
    }
    // Most are never seen.
    Loader {
        id: bubble
        parent: toolTip.Window.contentItem
        z: 1000
        active: false
        onLoaded: item.show()
        sourceComponent: RoundedRectangle {
            width: Math.min(content.implicitWidth, toolTip.widest) + 14
            height: content.height + 8
            radius: 5
            color: Style.menu
            borderColor: Style.menuBorder
            borderWidth: Style.hairline
            Accessible.ignored: true

            function show() {
                const place = toolTip.control.mapToItem(bubble.parent, 0, toolTip.control.height + 5);
                const area = toolTip.area;
                const start = area ? area.mapToItem(bubble.parent, 0, 0).x : 16;
                const end = area ? start + area.width : bubble.parent.width - 16;
                const wanted = place.x + (toolTip.control.width - width) / 2;
                bubble.x = Math.round(Math.max(start, Math.min(wanted, end - width)));
                bubble.y = Math.round(place.y);
            }

            Label {
                id: content
                x: 7
                y: 4
                width: Math.min(implicitWidth, toolTip.widest)
                wrapMode: Text.Wrap
                size: 11
                text: toolTip.text
                Accessible.ignored: true
            }
        }
    }
}
