#pragma once

#include "Platform/Linux/Bus/BusHandles.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/AccessObstacle.h"
#include "Platform/ShellCore/ShellLink.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform::cinnamon {

/// Sends our core to Cinnamon, which evaluates it: `Eval` of org.Cinnamon takes a script, and returns whether it ran
/// and its result as JSON (cinnamon 6.4 and 6.6, js/ui/cinnamonDBus.js). The core lives there as long as the link's
/// connection does. Whenever the link finds a Cinnamon without it, such as one that has just started, Cinnamon gets it
/// again. Nothing here waits. Main thread only.
class CoreLoader final : private shellcore::ShellLink::Listener {
public:
    /// Cinnamon's own name on the bus. The link must follow it.
    static constexpr const char* cinnamonName = "org.Cinnamon";

    /// The delay before the second attempt; each further one is twice as long, up to `longestRetry`. Cinnamon takes its
    /// name before it accepts scripts.
    static constexpr Duration soonestRetry = std::chrono::milliseconds(250);
    static constexpr Duration longestRetry = std::chrono::seconds(30);

    /// The time in which a core that Cinnamon has run answers. Cinnamon may be busy.
    static constexpr Duration longestSilence = std::chrono::seconds(5);

    /// `file` is the core's text, read whenever it is sent. Loop and link must outlive this. A core that has not
    /// answered `patience` after Cinnamon ran it counts as refused.
    CoreLoader(linux::MainLoop& mainLoop, shellcore::ShellLink& link, std::filesystem::path file,
               Duration patience = longestSilence);

    /// Nothing while the core works.
    [[nodiscard]] std::optional<AccessObstacle> obstacle() const;

    /// The obstacle where Cinnamon has not answered yet, or there is none.
    [[nodiscard]] static AccessObstacle silence();

    /// Sends the core again if Cinnamon has not run it.
    void retry();

    /// Called when Cinnamon has refused the core, so that `obstacle` may give another one; within the connection's own
    /// work. One at a time; an empty function ends it.
    void onRefusal(std::function<void()> called) { refused = std::move(called); }

private:
    struct Answers;

    void opened(const shellcore::Hello& hello, bool isNew) override;
    void closed() override;

    void signalArrived(std::string_view /*signal*/, sd_bus_message* /*message*/) override {}

    void send();
    void take(sd_bus_message* answer);
    void fail(std::string reason);

    linux::MainLoop& mainLoop;
    shellcore::ShellLink& link;
    std::filesystem::path file;
    Duration patience;
    std::function<void()> refused;
    /// Why the latest attempt failed; empty before its result.
    std::string failure;
    Duration untilRetry = soonestRetry;
    linux::OwnedSlot attempt;
    std::unique_ptr<ScheduledWork> next;
};

} // namespace platform::cinnamon
