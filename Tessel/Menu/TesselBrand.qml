import QtQuick
import CorvidKit

// The appearance of Tessel.
AppBrand {
    name: "Tessel"
    symbol: "uiwindow.split.2x1"
    gradient: [Qt.rgba(0.36, 0.62, 1, 1), Qt.rgba(0.16, 0.38, 0.96, 1)]
    accent: Style.blue
    symbolScale: 0.42
}
