import QtQuick
import CorvidKit

// An edge of a list at which its rows fade into what they lie on.
Rectangle {
    required property Flickable list
    required property color ground
    property bool isAtEnd: false
    property bool isShown: false

    parent: list
    y: isAtEnd ? list.height - height : 0
    width: list.width
    height: 16
    visible: opacity > 0
    opacity: isShown ? 1 : 0
    rotation: isAtEnd ? 180 : 0
    Accessible.ignored: true

    gradient: Gradient {
        GradientStop {
            position: 0
            color: ground
        }
        GradientStop {
            position: 1
            color: Qt.alpha(ground, 0)
        }
    }
    Behavior on opacity {
        enabled: Style.transition > 0
        NumberAnimation {
            duration: Style.transition
        }
    }
}
