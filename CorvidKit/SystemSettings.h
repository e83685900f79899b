#pragma once

/// The way into the desktop's own settings. Main thread only.
namespace corvid::SystemSettings {

enum class Pane {
    accessibility,
    automation,
    screenRecording,
    keyboardShortcuts,
};

/// Opens the first page for the pane that this desktop knows; without one nothing happens.
void open(Pane pane);

} // namespace corvid::SystemSettings
