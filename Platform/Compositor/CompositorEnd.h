#pragma once

#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace platform::compositor {

/// Decides that a compositor is gone whose connection is lost. A compositor that a supervisor restarts comes back at
/// the same place within a while. One that ends with the user's session takes its sockets away: the user may be back
/// soon, with another compositor whose program would find this one still running, so that is looked for at short
/// intervals. Main thread only.
class CompositorEnd {
public:
    static constexpr std::chrono::seconds patience{15};
    static constexpr std::chrono::seconds betweenLooks{2};

    /// `hasLeft`: whether the compositor has taken its sockets away. `gone`: called once, when the compositor counts as
    /// gone. The main actor outlives this.
    CompositorEnd(MainActor& mainActor, std::function<bool()> hasLeft, std::function<void()> gone);

    /// Waits for a compositor that begins: for the whole while, because it has no sockets yet.
    void await();

    /// The connection is open.
    void reached() { work.reset(); }

    /// The connection is lost.
    void lost() { lookUntil(mainActor.now() + patience); }

private:
    void lookUntil(Instant limit);

    MainActor& mainActor;
    std::function<bool()> hasLeft;
    std::function<void()> gone;
    std::unique_ptr<ScheduledWork> work;
};

/// For `hasLeft`: whether no file is at the path of the compositor's socket any more.
[[nodiscard]] std::function<bool()> absenceOf(std::string socket);

/// For `gone`: writes it to the log and ends the loop with an error. The loop must outlive it.
[[nodiscard]] std::function<void()> endOfLoop(linux::MainLoop& mainLoop, std::string compositor);

} // namespace platform::compositor
