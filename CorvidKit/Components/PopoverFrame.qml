import QtQuick
import CorvidKit

// The frame of a view in a window of its own: the rounded plate under it, and its shadow.
FocusScope {
    id: frame

    // For a transparent window; otherwise the plate fills the window.
    property bool isBlended: true
    readonly property real margin: isBlended ? 20 : 0
    property Item content: null
    // Whether it opens with an animation. In an opaque window, that would fade in from black.
    property bool isAnimated: true

    signal dismissed

    function appear() {
        entrance.stop();
        holder.contentY = 0;
        if (isAnimated && isBlended && Style.transition > 0) {
            entrance.start();
        } else {
            plate.opacity = 1;
            shift.y = 0;
        }
    }

    implicitWidth: (content ? content.implicitWidth : 0) + 2 * margin
    implicitHeight: (content ? content.implicitHeight : 0) + 2 * margin
    focus: true
    Keys.onEscapePressed: dismissed()
    onContentChanged: if (content) {
        content.parent = holder.contentItem;
        content.anchors.fill = holder.contentItem;
    }

    Item {
        id: plate
        anchors.fill: parent
        anchors.margins: frame.margin
        transform: Translate {
            id: shift
        }

        SoftShadow {
            visible: frame.isBlended
            anchors.fill: parent
            anchors.margins: -blur
            anchors.topMargin: -blur + 4
            anchors.bottomMargin: -blur - 4
            blur: 16
            radius: 12
            color: Style.shadow
        }
        RoundedRectangle {
            anchors.fill: parent
            radius: frame.isBlended ? 12 : 0
            color: Style.window
            borderColor: Style.windowBorder
            borderWidth: Style.hairline
        }
        Flickable {
            id: holder

            readonly property Item focused: Window.activeFocusItem

            // Scrolls to an item of the content that is not wholly to be seen.
            function reveal(item) {
                let ancestor = item;
                while (ancestor && ancestor !== contentItem)
                    ancestor = ancestor.parent;
                if (!ancestor || !interactive)
                    return;
                const around = 14;
                const top = item.mapToItem(contentItem, 0, 0).y - around;
                const bottom = top + item.height + 2 * around;
                const wanted = Math.min(top, Math.max(contentY, bottom - height));
                contentY = Math.max(0, Math.min(wanted, contentHeight - height));
            }

            anchors.fill: parent
            contentHeight: frame.content ? frame.content.implicitHeight : 0
            // On a screen that is not as high as the content.
            interactive: contentHeight > height
            clip: interactive
            boundsBehavior: Flickable.StopAtBounds
            LayoutMirroring.enabled: Environment.isMirrored
            onFocusedChanged: reveal(focused)

            ScrollMark {
                list: holder
                // Not in the plate's round corners.
                inset: 12
            }
        }
    }
    ParallelAnimation {
        id: entrance

        NumberAnimation {
            target: plate
            property: "opacity"
            from: 0.3
            to: 1
            duration: 90
        }
        NumberAnimation {
            target: shift
            property: "y"
            from: -6
            to: 0
            duration: 140
            easing.type: Easing.OutCubic
        }
    }
}
