#pragma once

#include "Platform/Compositor/Accessibility.h"
#include "Platform/Compositor/AccessibilityObservers.h"
#include "Platform/Compositor/OwnWindows.h"
#include "Platform/Compositor/Placement.h"
#include "Platform/Compositor/RunningApplications.h"
#include "Platform/Compositor/Screens.h"
#include "Platform/Compositor/Turn.h"
#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Compositor/Workspace.h"
#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Windows/Deliveries.h"
#include "Platform/Seam/Desktop/ApplicationCatalogue.h"
#include "Platform/Seam/Desktop/DesktopParts.h"

#include <memory>

namespace platform::compositor {

/// Everything that works through a `WindowAccess`, in one object. A desktop for one kind of compositor has it as a
/// member, after its table and its window access, and adds its hot keys and its sound.
class WindowParts {
public:
    /// All three outlive this.
    WindowParts(linux::MainLoop& mainLoop, WindowTable& table, WindowAccess& access);
    WindowParts(const WindowParts&) = delete;
    WindowParts& operator=(const WindowParts&) = delete;
    ~WindowParts();

    /// Begins to follow applications, as `linux::Desktop` describes it.
    void followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue);

    /// The table of a desktop's parts: these, and those that each kind of compositor has for itself.
    [[nodiscard]] DesktopParts with(Beep& sound, HotKeyEvents& hotKeys, ShortcutHolders* holders);

    /// Notifies, in a later turn of the loop, that the answer of `Accessibility::obstacle` may have changed. The window
    /// access's opening and closing are noticed here.
    void announceAccess();

private:
    linux::MainLoop& mainLoop;
    WindowTable& table;
    Turn turn;
    Placement placement;
    Accessibility windows;
    OwnWindows own;
    Screens outputs{turn};
    Workspace applications{turn};
    linux::Deliveries deliveries;
    AccessibilityObservers observers;
    RunningApplications processes;
    std::unique_ptr<linux::TurnEnd> turnEnd;
    std::unique_ptr<ScheduledWork> accessNotice;
};

} // namespace platform::compositor
