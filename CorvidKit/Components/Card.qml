import QtQuick
import CorvidKit

// A rounded, bordered container, as high as its content unless it is given a height.
RoundedRectangle {
    id: card

    property real padding: 0
    default property alias content: inner.data
    property alias contentItem: inner

    implicitHeight: inner.childrenRect.height + 2 * padding
    radius: Style.cardRadius
    color: Style.card
    borderColor: Style.cardBorder
    borderWidth: Style.hairline

    Item {
        id: inner
        anchors.fill: parent
        anchors.margins: card.padding
    }
}
