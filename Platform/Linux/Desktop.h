#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Services/AppearanceSource.h"
#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/DesktopParts.h"

#include <string>
#include <string_view>

namespace platform::linux {

/// The parts of one kind of desktop. References that it gives out are valid as long as the desktop lives. Main thread
/// only.
class Desktop {
public:
    Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;
    virtual ~Desktop() = default;

    /// The backend's name for people, as `--status` prints it: "X11", "KWin", "GNOME Shell", "Cinnamon", "sway", "i3".
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// While windows can be placed: a warning for the user, as part of a sentence in English, without a full stop.
    /// Empty where there is none.
    [[nodiscard]] virtual std::string caution() { return {}; }

    /// Begins to follow the running applications and their windows. Windows that exist already are not reported as new.
    /// No application is known before this call. Both arguments must outlive this. To be called once.
    virtual void followApplications(ApplicationIdentification& identification, ApplicationCatalogue& catalogue) = 0;

    [[nodiscard]] virtual DesktopParts parts() = 0;

    /// The desktop's own source for the appearance of programs; null without one.
    [[nodiscard]] virtual AppearanceSource* appearanceSource() { return nullptr; }

    /// This desktop's own place for status items, beside the common one; null without one.
    [[nodiscard]] virtual TrayPlace* trayPlace() { return nullptr; }

    /// Whether its own way is better if both are available.
    [[nodiscard]] virtual bool prefersOwnTrayPlace() const { return false; }
};

} // namespace platform::linux
