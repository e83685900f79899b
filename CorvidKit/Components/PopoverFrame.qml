import QtQuick
import CorvidKit

// What is around a view that hangs as a window of its own: the rounded plate it lies on, and its shadow.
FocusScope {
    id: frame

    // Where the window lets through what is behind it; elsewhere the plate fills the window.
    property bool isBlended: true
    readonly property real margin: isBlended ? 20 : 0
    property Item content: null
    // Whether it opens with a transition. Where nothing shines through, that would come out of black.
    property bool isAnimated: true

    signal dismissed

    function appear() {
        entrance.stop();
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
        content.parent = holder;
        content.anchors.fill = holder;
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
        Item {
            id: holder
            anchors.fill: parent
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
