#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/ShellCore/ShellLink.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"
#include "Tests/Platform/ShellCore/FakeShell.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>

namespace platform::shellcore {

inline constexpr const char* oneWindow =
    R"("windows":[{"id":7,"pid":42,"applicationId":"org.example.Editor","kind":"standard","frame":[10,20,300,200]}],)"
    R"("focused":7,"outputs":[{"frame":[0,0,1600,900],"workArea":[0,32,1600,868]}])";

/// A message bus, a simulated shell on it, and a link to that.
class ShellTest : public testing::Test {
protected:
    explicit ShellTest(const FakeShell::Place& place = {})
        : place(place) {
        bus.start();
        shell.emplace(bus.address(), place);
        sessionBus.emplace(loop, bus.address(), std::chrono::milliseconds(20));
        link.emplace(loop, *sessionBus, place.name);
    }

    /// Runs the loop until the condition holds; false if it does not within some seconds.
    bool until(const std::function<bool()>& condition) {
        constexpr std::uint64_t shortWait = 10'000;
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > end) {
                return false;
            }
            sd_event_run(loop.handle(), shortWait);
        }
        return true;
    }

    /// Returns when every message that the shell has sent so far has been handled.
    void catchUp() {
        const std::string call = "Ping " + std::to_string(++pings);
        link->send("Ping", "u", pings);
        ASSERT_TRUE(until([&] { return shell->wasCalled(call); }));
        bool isBack = false;
        shell->answerWith("Echo", "");
        sd_bus_slot* slot = nullptr;
        sd_bus_call_method_async(
            link->connection(), &slot, place.name, place.path, "org.example.Test", "Echo",
            [](sd_bus_message* /*reply*/, void* data, sd_bus_error* /*error*/) {
                *static_cast<bool*>(data) = true;
                return 0;
            },
            &isBack, "");
        const linux::OwnedSlot owned(slot);
        ASSERT_TRUE(until([&] { return isBack; }));
        // Posted calls have run as well.
        bool isDone = false;
        loop.post([&] { isDone = true; });
        ASSERT_TRUE(until([&] { return isDone; }));
    }

    [[nodiscard]] Instant soon() const { return loop.now() + std::chrono::seconds(5); }

    FakeShell::Place place;
    MessageBus bus;
    linux::MainLoop loop;
    std::optional<FakeShell> shell;
    std::optional<linux::SessionBus> sessionBus;
    std::optional<ShellLink> link;

private:
    std::uint32_t pings = 0;
};

} // namespace platform::shellcore
