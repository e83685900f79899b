#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <optional>
#include <string>

namespace platform::linux {

/// A windowing system's clues to the application behind a window. Everything but the process may be empty, and nothing
/// is trusted to be well-formed.
struct ApplicationClues {
    /// The process in this program's own numbering; not positive where it is unknown or on another machine.
    ProcessIdentifier process = 0;
    /// The application id that the toolkit puts on the window: `_GTK_APPLICATION_ID`, `_KDE_NET_WM_DESKTOP_FILE`, the
    /// `app_id` of xdg-shell.
    std::string applicationId;
    /// The two halves of `WM_CLASS` (ICCCM 4.1.2.5).
    std::string windowClass;
    std::string windowInstance;

    friend bool operator==(const ApplicationClues&, const ApplicationClues&) = default;
};

/// Identifies the installed application of a window or process. Main thread only.
class ApplicationIdentification {
public:
    ApplicationIdentification() = default;
    ApplicationIdentification(const ApplicationIdentification&) = delete;
    ApplicationIdentification& operator=(const ApplicationIdentification&) = delete;
    virtual ~ApplicationIdentification() = default;

    /// The bundle identifier: the id of a desktop entry without ".desktop". Empty if none fits; more clues may then
    /// find one later.
    [[nodiscard]] virtual std::optional<std::string> bundleIdentifier(const ApplicationClues& clues) = 0;
};

} // namespace platform::linux
