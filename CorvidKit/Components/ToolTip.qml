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
        bubble.visible = false;
    }

    Timer {
        id: delay
        interval: 700
        onTriggered: bubble.show()
    }
    RoundedRectangle {
        id: bubble
        parent: toolTip.Window.contentItem
        z: 1000
        visible: false
        width: Math.min(content.implicitWidth, toolTip.widest) + 14
        height: content.height + 8
        radius: 5
        color: Style.menu
        borderColor: Style.menuBorder
        borderWidth: Style.hairline
        Accessible.ignored: true

        function show() {
            const place = toolTip.control.mapToItem(parent, 0, toolTip.control.height + 5);
            const start = toolTip.area ? toolTip.area.mapToItem(parent, 0, 0).x : 16;
            const end = toolTip.area ? start + toolTip.area.width : parent.width - 16;
            x = Math.round(Math.max(start, Math.min(place.x + (toolTip.control.width - width) / 2, end - width)));
            y = Math.round(place.y);
            visible = true;
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
