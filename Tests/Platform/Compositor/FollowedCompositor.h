#pragma once

#include "../Linux/Applications/PlainApplications.h"
#include "Platform/Absent/Desktop.h"
#include "Platform/Compositor/WindowParts.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "SimulatedWindowAccess.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform::compositor {

/// A desktop with a simulated window access and the real event loop. It records the application events.
class FollowedCompositor : public testing::Test {
protected:
    FollowedCompositor();

    /// Begins the access with these windows, and begins to follow applications.
    void start(WindowTable::Contents contents = {});

    /// A window of the process with that class, ready.
    void openWindow(const WindowIdentifier& identifier, ProcessIdentifier process, const std::string& className);

    /// Runs the event loop until the condition holds; false if it does not within some seconds.
    [[nodiscard]] bool runUntil(const std::function<bool()>& condition);

    /// Runs the event loop until no work is left.
    void drain();

    linux::MainLoop mainLoop;
    WindowTable table;
    SimulatedWindowAccess access{table, [this] { return mainLoop.now(); }, [](Duration /*time*/) {}};
    linux::PlainIdentification identification;
    linux::PlainCatalogue catalogue;
    /// "launch editor", "terminate editor"; "nobody" for an unidentified application.
    std::vector<std::string> reported;
    absent::Desktop others;
    std::unique_ptr<WindowParts> desktop = std::make_unique<WindowParts>(mainLoop, table, access);
    [[nodiscard]] DesktopParts parts() { return desktop->with(others.sound, others.hotKeyEvents, nullptr); }
};

} // namespace platform::compositor
