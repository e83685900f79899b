#pragma once

#include "Platform/Compositor/Accessibility.h"
#include "Platform/Compositor/AccessibilityObservers.h"
#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/OwnWindows.h"
#include "Platform/Compositor/Placement.h"
#include "Platform/Compositor/RunningApplications.h"
#include "Platform/Compositor/Screens.h"
#include "Platform/Compositor/Turn.h"
#include "Platform/Compositor/WindowTable.h"
#include "Platform/Compositor/Workspace.h"
#include "Platform/Linux/Desktop.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/Linux/Windows/Deliveries.h"

#include <memory>

namespace platform::compositor {

/// All that is done through a door, put together. A desktop of one kind of compositor derives from this, brings its
/// door and its hot keys, and adds what else it has. It keeps the table and the door in a base class that comes before
/// this one, so that they live for longer.
class Desktop : public linux::Desktop {
public:
    ~Desktop() override;

    void followApplications(linux::ApplicationIdentification& identification, ApplicationCatalogue& catalogue) override;

    [[nodiscard]] Accessibility& accessibility() override { return windows; }

    [[nodiscard]] AccessibilityObservers& accessibilityObservers() override { return observers; }

    [[nodiscard]] OwnWindows& ownWindows() override { return own; }

    [[nodiscard]] RunningApplications& runningApplications() override { return processes; }

    [[nodiscard]] Screens& screens() override { return outputs; }

    [[nodiscard]] Workspace& workspace() override { return applications; }

    [[nodiscard]] linux::AppearanceSource* appearanceSource() override { return nullptr; }

    [[nodiscard]] linux::TrayPlace* trayPlace() override { return nullptr; }

protected:
    /// All three outlive this.
    Desktop(linux::MainLoop& mainLoop, WindowTable& table, Door& door);

    /// Begins a new turn, with its own reading and its own time, within one of the event loop: before each of several
    /// presses that arrive together.
    void beginTurn();

    /// Notifies, in a later turn of the loop, that the answer of `Accessibility::obstacle` may have changed. The door's
    /// opening and closing are noticed here.
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
