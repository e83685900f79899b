#pragma once

#include "Platform/Compositor/WindowAccess.h"
#include "Platform/Compositor/WindowTable.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace platform::compositor {

/// A compositor in memory and the access to its windows: windows that refuse sizes, replies that come late or never. It
/// records every request.
///
/// Trace: "refresh", "place a at (10, 20) 300 x 200", the same with " without waiting", "prompt", "place own Title at
/// (10, 20)".
class SimulatedWindowAccess final : public WindowAccess {
public:
    /// `now` returns the time, and `pass` advances it.
    SimulatedWindowAccess(WindowTable& table, std::function<Instant()> now, std::function<void(Duration)> pass)
        : table(table)
        , now(std::move(now))
        , pass(std::move(pass)) {}

    void refresh(Instant deadline) override;
    AXError place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;
    void prompt() override { trace.emplace_back("prompt"); }
    [[nodiscard]] AccessObstacle obstacle() const override { return reason; }
    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return pointerPosition; }
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

    /// The requests since the last call.
    [[nodiscard]] std::vector<std::string> takeTrace() { return std::exchange(trace, {}); }

    /// Events in the compositor, reported with the next `refresh`.
    std::function<void()> unreported;
    /// The minimum size of windows that refuse smaller ones.
    std::map<WindowIdentifier, corvid::CGSize> leastSizes;
    /// Windows of hanging programs: they never come to rest.
    std::set<WindowIdentifier> silent;
    /// The time that the other windows take.
    Duration settling = std::chrono::milliseconds(5);
    std::optional<corvid::CGPoint> pointerPosition;
    AccessObstacle reason{.kind = AccessObstacle::Kind::silentCompositor, .desktop = "Simulated"};

private:
    WindowTable& table;
    std::function<Instant()> now;
    std::function<void(Duration)> pass;
    std::vector<std::string> trace;
};

/// A standard window of a process, ready for use.
[[nodiscard]] Window readyWindow(ProcessIdentifier process, const corvid::CGRect& frame = {{0, 0}, {300, 200}});

} // namespace platform::compositor
