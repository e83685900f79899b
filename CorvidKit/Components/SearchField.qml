import QtQuick
import CorvidKit

// A field to search with. The arrow keys are for the list that it searches.
FocusScope {
    id: field

    property string placeholder
    property alias text: input.text

    signal edited(string text)
    signal accepted
    signal moved(int step)

    implicitHeight: 28

    RoundedRectangle {
        anchors.fill: parent
        radius: 7
        color: Style.card
        borderColor: input.activeFocus ? Style.brandMark(Environment.appBrand.accent) : Style.capBorder
        borderWidth: input.activeFocus ? 2 : Style.hairline
    }
    // Where the rows of the list have their icons.
    Symbol {
        id: glass
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 20
        height: 20
        name: "magnifyingglass"
        size: 11
        color: Style.secondary
    }
    TextInput {
        id: input
        anchors.left: glass.right
        anchors.leftMargin: 10
        anchors.right: clear.left
        anchors.rightMargin: 4
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: placeholder.rise
        focus: true
        activeFocusOnTab: true
        clip: true
        selectByMouse: true
        font: Environment.font(12.5)
        color: Style.primary
        selectionColor: Style.underText(Environment.appBrand.accent, 0.14)
        selectedTextColor: "white"
        onTextEdited: field.edited(text)
        onAccepted: field.accepted()
        Keys.onDownPressed: field.moved(1)
        Keys.onUpPressed: field.moved(-1)
        Keys.onEscapePressed: event => {
            event.accepted = text !== "";
            field.clear();
        }
        Accessible.role: Accessible.EditableText
        Accessible.name: field.placeholder
        Accessible.editable: true
        Accessible.searchEdit: true
    }
    Label {
        id: placeholder
        anchors.left: input.left
        anchors.right: input.right
        anchors.baseline: parent.verticalCenter
        anchors.baselineOffset: rise
        visible: input.text === "" && input.preeditText === ""
        text: field.placeholder
        size: 12.5
        color: Style.tertiary
        Accessible.ignored: true
    }
    Symbol {
        id: clear
        anchors.right: parent.right
        // The drawing ends a point within its square.
        anchors.rightMargin: 9
        anchors.verticalCenter: parent.verticalCenter
        visible: input.text !== ""
        name: "xmark.circle.fill"
        size: 11
        color: Style.tertiary

        MouseArea {
            anchors.fill: parent
            anchors.margins: -4
            onClicked: field.clear()
        }
    }

    function clear() {
        if (input.text !== "") {
            input.clear();
            field.edited("");
        }
    }
}
