import QtQuick
import CorvidKit

// The program's icon, name and status, and the master switch.
Item {
    id: header

    property string status
    property color statusColor
    property bool isOn
    property string switchHelp

    signal toggled(bool isOn)

    implicitHeight: Math.max(glyph.height, texts.height)

    AppGlyph {
        id: glyph
        anchors.left: parent.left
        anchors.verticalCenter: parent.verticalCenter
        size: 40
    }
    Column {
        id: texts
        anchors.left: glyph.right
        anchors.leftMargin: 10
        anchors.right: masterSwitch.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Label {
            width: parent.width
            text: Environment.appBrand.name
            size: 15
            weight: Font.DemiBold
            Accessible.role: Accessible.Heading
        }
        Item {
            width: parent.width
            height: statusText.height

            RoundedRectangle {
                id: dot
                anchors.left: parent.left
                anchors.verticalCenter: statusText.baseline
                anchors.verticalCenterOffset: -statusText.rise
                anchors.alignWhenCentered: false
                width: 7
                height: 7
                radius: 3.5
                isContinuous: false
                color: header.statusColor
            }
            Label {
                id: statusText
                anchors.left: dot.right
                anchors.leftMargin: 5
                anchors.right: parent.right
                text: header.status
                size: 11.5
                color: Style.secondary
            }
        }
    }
    MenuSwitch {
        id: masterSwitch
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        isOn: header.isOn
        title: Environment.appBrand.name
        help: header.switchHelp
        onToggled: isOn => header.toggled(isOn)

        ToolTip {
            text: header.switchHelp
            control: masterSwitch
        }
    }
}
