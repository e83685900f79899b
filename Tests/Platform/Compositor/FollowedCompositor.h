#pragma once

#include "../Linux/Applications/PlainApplications.h"
#include "Platform/Compositor/Desktop.h"
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
    class PlainDesktop final : public Desktop {
    public:
        PlainDesktop(linux::MainLoop& mainLoop, WindowTable& table, WindowAccess& access)
            : Desktop(mainLoop, table, access) {}

        [[nodiscard]] std::string_view name() const override { return "simulated"; }
        [[nodiscard]] platform::Beep& sound() override { std::abort(); }
        [[nodiscard]] HotKeyEvents& hotKeyEvents() override { std::abort(); }
    };

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
    std::vector<std::string> told;
    std::unique_ptr<PlainDesktop> desktop = std::make_unique<PlainDesktop>(mainLoop, table, access);
};

} // namespace platform::compositor
