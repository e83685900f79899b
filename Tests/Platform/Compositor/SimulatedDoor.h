#pragma once

#include "Platform/Compositor/Door.h"
#include "Platform/Compositor/WindowTable.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace platform::compositor {

/// A compositor in memory and the way to it: windows that refuse sizes, answers that come late or never. Whatever is
/// asked is written down.
///
/// Trace: "refresh", "place a at (10, 20) 300 x 200", the same with " without waiting", "prompt", "place own Title at
/// (10, 20)".
class SimulatedDoor final : public Door {
public:
    /// `now` tells the time, and `pass` lets it go by.
    SimulatedDoor(WindowTable& table, std::function<Instant()> now, std::function<void(Duration)> pass)
        : table(table)
        , now(std::move(now))
        , pass(std::move(pass)) {}

    void refresh(Instant deadline) override;
    AXError place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) override;
    void prompt() override { trace.emplace_back("prompt"); }
    [[nodiscard]] AccessObstacle obstacle() const override { return reason; }
    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override { return pointerPosition; }
    void placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) override;

    /// What was asked of the door since this was called last.
    [[nodiscard]] std::vector<std::string> takeTrace() { return std::exchange(trace, {}); }

    /// What has happened in the compositor and is told with the next `refresh`.
    std::function<void()> untold;
    /// The least size of windows that refuse smaller ones.
    std::map<WindowIdentifier, corvid::CGSize> leastSizes;
    /// Windows whose programs hang: they never come to rest.
    std::set<WindowIdentifier> silent;
    /// How long the others take.
    Duration settling = std::chrono::milliseconds(5);
    std::optional<corvid::CGPoint> pointerPosition;
    AccessObstacle reason{.kind = AccessObstacle::Kind::silentCompositor, .desktop = "Simulated"};

private:
    WindowTable& table;
    std::function<Instant()> now;
    std::function<void(Duration)> pass;
    std::vector<std::string> trace;
};

/// A standard window of a process that can be dealt with.
[[nodiscard]] Window readyWindow(ProcessIdentifier process, const corvid::CGRect& frame = {{0, 0}, {300, 200}});

} // namespace platform::compositor
