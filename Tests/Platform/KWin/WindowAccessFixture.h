#pragma once

#include "FakeKWin.h"
#include "Platform/KWin/WindowAccess.h"
#include "Tests/Platform/Linux/Control/MessageBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

namespace platform::kwin {

inline constexpr const char* editor = "{editor}";
inline const corvid::CGRect startFrame{{100, 100}, {640, 480}};

inline nlohmann::json windowAt(const corvid::CGRect& frame, const std::string& identifier = editor) {
    return {{"id", identifier},
            {"process", 42},
            {"entry", "org.example.Editor"},
            {"class", "editor"},
            {"instance", "Editor"},
            {"kind", "standard"},
            {"skipsTaskBars", false},
            {"isFullscreen", false},
            {"frame", {frame.origin.x, frame.origin.y, frame.size.width, frame.size.height}}};
}

inline std::string report(const nlohmann::json& window) {
    return nlohmann::json{{"window", window}}.dump();
}

/// Access to a simulated KWin with one window.
class WindowAccessTest : public testing::Test {
protected:
    static constexpr ScriptLink::Timing quick{.keepAlive = std::chrono::milliseconds(20),
                                              .keepAliveLeeway = std::chrono::milliseconds(1),
                                              .patience = std::chrono::milliseconds(60),
                                              .loading = std::chrono::milliseconds(200),
                                              .retry = std::chrono::milliseconds(50),
                                              .farewell = std::chrono::milliseconds(500)};

    MessageBus daemon;
    linux::MainLoop loop;
    compositor::WindowTable table;
    // Created once the daemon runs.
    std::unique_ptr<FakeKWin> kwin;
    std::unique_ptr<linux::SessionBus> bus;
    std::unique_ptr<WindowAccess> access;

    void SetUp() override {
        daemon.start();
        kwin = std::make_unique<FakeKWin>(daemon.address());
        openWith({windowAt(startFrame)}, editor);
    }

    void openWith(const std::vector<nlohmann::json>& windows, const std::string& focused) {
        kwin->opened =
            nlohmann::json{{"opened",
                            {{"windows", windows},
                             {"focused", focused},
                             {"screens", {{{"frame", {0, 0, 1600, 900}}, {"workArea", {0, 30, 1600, 870}}}}}}}}
                .dump();
    }

    void open(ScriptLink::Timing timing = {}) {
        kwin->start();
        connect(timing);
        ASSERT_TRUE(access->waitUntilOpen(loop.now() + std::chrono::seconds(10)));
    }

    void connect(ScriptLink::Timing timing = {}) {
        bus = std::make_unique<linux::SessionBus>(loop, daemon.address(), std::chrono::milliseconds(20));
        access = std::make_unique<WindowAccess>(loop, *bus, table, "/somewhere/tessel.js", timing);
        ASSERT_TRUE(bus->awaitArrival(loop.now() + std::chrono::seconds(10)));
    }

    bool runUntil(const std::function<bool()>& holds) {
        const Instant deadline = loop.now() + std::chrono::seconds(10);
        while (!holds() && loop.now() < deadline) {
            sd_event_run(loop.handle(), std::uint64_t{2000});
        }
        return holds();
    }

    [[nodiscard]] Instant soon() const { return loop.now() + std::chrono::seconds(10); }

    /// The script replies to a placement with `result` (with its number added) and then sends `then`.
    void onPlace(const nlohmann::json& result, std::function<void(FakeKWin::Script&)> then = nullptr) {
        kwin->carryOut = [result, then = std::move(then)](FakeKWin::Script& script, const std::string& text) {
            nlohmann::json results = nlohmann::json::array();
            for (const nlohmann::json& command : nlohmann::json::parse(text)) {
                nlohmann::json one = result;
                one["number"] = command["number"];
                results.push_back(one);
            }
            script.next(results.dump());
            if (!results.empty() && then) {
                then(script);
            }
        };
    }

    [[nodiscard]] long count(const std::string& what) {
        return std::ranges::count_if(kwin->history(), [&](const std::string& one) { return one.starts_with(what); });
    }
};

} // namespace platform::kwin
