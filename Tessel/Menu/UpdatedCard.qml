import QtQuick
import CorvidKit

// Another version has been installed, and the former one still runs.
WarningCard {
    symbol: "arrow.down.circle.fill"
    title: qsTranslate("Tessel", "Tessel was updated")
    message: qsTranslate("Tessel", "This is still the former version. Restart Tessel to use the new one.")
    button: qsTranslate("Tessel", "Restart Tessel")
}
