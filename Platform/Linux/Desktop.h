#pragma once

#include "Platform/Accessibility.h"
#include "Platform/AccessibilityObserver.h"
#include "Platform/ApplicationCatalogue.h"
#include "Platform/Beep.h"
#include "Platform/HotKeyEvents.h"
#include "Platform/Linux/AppearanceSource.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/OwnWindows.h"
#include "Platform/RunningApplications.h"
#include "Platform/Screens.h"
#include "Platform/ShortcutHolders.h"
#include "Platform/Workspace.h"

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

    /// The backend's name for people, as `--status` prints it: "X11", "KWin", "GNOME Shell", "sway", "i3".
    [[nodiscard]] virtual std::string_view name() const = 0;

    /// While windows can be placed: a warning for the user, as part of a sentence in English, without a full stop.
    /// Empty where there is none.
    [[nodiscard]] virtual std::string caution() { return {}; }

    /// Begins to follow the running applications and their windows. Windows that exist already are not reported as new.
    /// No application is known before this call. Both arguments must outlive this. To be called once.
    virtual void followApplications(ApplicationIdentification& identification, ApplicationCatalogue& catalogue) = 0;

    [[nodiscard]] virtual Accessibility& accessibility() = 0;
    [[nodiscard]] virtual AccessibilityObservers& accessibilityObservers() = 0;
    [[nodiscard]] virtual Beep& sound() = 0;
    [[nodiscard]] virtual HotKeyEvents& hotKeyEvents() = 0;
    [[nodiscard]] virtual OwnWindows& ownWindows() = 0;
    [[nodiscard]] virtual RunningApplications& runningApplications() = 0;
    [[nodiscard]] virtual Screens& screens() = 0;

    /// The source of the holders of shortcuts that were refused; null where there is none.
    [[nodiscard]] virtual ShortcutHolders* shortcutHolders() { return nullptr; }

    [[nodiscard]] virtual Workspace& workspace() = 0;

    /// The desktop's own source for how programs are to look; null where it has none.
    [[nodiscard]] virtual AppearanceSource* appearanceSource() = 0;

    /// Where this desktop takes status items, if it has a way of its own beside the one that all share; else null.
    [[nodiscard]] virtual TrayPlace* trayPlace() = 0;

    /// Whether its own way is the better one where both are open.
    [[nodiscard]] virtual bool prefersOwnTrayPlace() const { return false; }
};

} // namespace platform::linux
