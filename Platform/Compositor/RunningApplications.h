#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Linux/Windows/RunningProcesses.h"

#include <functional>
#include <map>

namespace platform::compositor {

/// The processes that own windows in the table, or have owned one and still run. Windows without a known process are
/// left out.
class RunningApplications final : public linux::RunningProcesses, private WindowTable::Follower {
public:
    /// Called when a window is ready.
    using WindowReady = std::function<void(const WindowIdentifier& identifier, const Window& window)>;

    RunningApplications(linux::MainLoop& mainLoop, WindowTable& table, linux::Deliveries& deliveries,
                        WindowReady windowReady);

    /// Begins to follow the table. Both must outlive this. Call it once.
    void start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names);

private:
    void windowAppeared(const WindowIdentifier& identifier, const Window& window, bool wasThere) override;
    void windowChangedIdentity(const WindowIdentifier& identifier, const Window& window) override;
    void windowBecameReady(const WindowIdentifier& identifier, const Window& window) override;
    void windowVanished(const WindowIdentifier& identifier, const Window& window) override;

    [[nodiscard]] bool hasReadyWindow(ProcessIdentifier process) override;
    [[nodiscard]] std::vector<linux::ApplicationClues> clues(ProcessIdentifier process) override;
    [[nodiscard]] ActivationPolicy activationPolicy(ProcessIdentifier process) override;

    // The table reports every change anyway, and caches nothing of a process.
    void stopListening(ProcessIdentifier /*process*/) override {}

    void forget(ProcessIdentifier /*process*/) override {}

    [[nodiscard]] bool hasWindow(ProcessIdentifier process, const std::function<bool(const Window&)>& condition) const;
    void takeOwner(const WindowIdentifier& identifier, const Window& window, bool wasThere);
    void dropOwner(const WindowIdentifier& identifier);

    WindowTable& table;
    WindowReady windowReady;
    /// The process of a window, as far as it is known. It may be reported late.
    std::map<WindowIdentifier, ProcessIdentifier> owners;
};

} // namespace platform::compositor
