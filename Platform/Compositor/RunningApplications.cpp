#include "Platform/Compositor/RunningApplications.h"

#include <algorithm>
#include <utility>

namespace platform::compositor {

RunningApplications::RunningApplications(linux::MainLoop& mainLoop, WindowTable& table, linux::Deliveries& deliveries,
                                         WindowReady windowReady)
    : RunningProcesses(mainLoop, deliveries)
    , table(table)
    , windowReady(std::move(windowReady)) {
}

void RunningApplications::start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names) {
    setNames(identifier, names);
    table.setFollower(*this);
}

void RunningApplications::windowAppeared(const WindowIdentifier& identifier, const Window& window, bool wasThere) {
    takeOwner(identifier, window, wasThere);
}

void RunningApplications::windowChangedIdentity(const WindowIdentifier& identifier, const Window& window) {
    const auto known = owners.find(identifier);
    if (known != owners.end() && known->second == window.clues.process) {
        RunningProcesses::windowChangedIdentity(window.clues);
        return;
    }
    dropOwner(identifier);
    takeOwner(identifier, window, table.arrivalOf(identifier) == 0);
    RunningProcesses::windowBecameReady(window.clues.process);
}

void RunningApplications::windowBecameReady(const WindowIdentifier& identifier, const Window& window) {
    RunningProcesses::windowBecameReady(window.clues.process);
    windowReady(identifier, window);
}

void RunningApplications::windowVanished(const WindowIdentifier& identifier, const Window& /*window*/) {
    dropOwner(identifier);
}

bool RunningApplications::hasReadyWindow(ProcessIdentifier process) {
    return hasWindow(process, [](const Window& window) { return window.isReady; });
}

std::vector<linux::ApplicationClues> RunningApplications::clues(ProcessIdentifier process) {
    std::vector<linux::ApplicationClues> all;
    for (const WindowIdentifier& identifier : table.windowsOf(process)) {
        all.push_back(table.find(identifier)->clues);
    }
    return all;
}

ActivationPolicy RunningApplications::activationPolicy(ProcessIdentifier process) {
    const bool isInTaskBars = hasWindow(process, [](const Window& window) {
        return window.isReady && window.kind == WindowKind::standard && !window.skipsTaskBars;
    });
    return isInTaskBars ? ActivationPolicy::regular : ActivationPolicy::accessory;
}

bool RunningApplications::hasWindow(ProcessIdentifier process,
                                    const std::function<bool(const Window&)>& condition) const {
    return std::ranges::any_of(table.windowsOf(process),
                               [&](const WindowIdentifier& identifier) { return condition(*table.find(identifier)); });
}

void RunningApplications::takeOwner(const WindowIdentifier& identifier, const Window& window, bool wasThere) {
    if (window.clues.process != 0) {
        static_cast<void>(RunningProcesses::windowAppeared(window.clues, wasThere));
        owners.insert_or_assign(identifier, window.clues.process);
    }
}

void RunningApplications::dropOwner(const WindowIdentifier& identifier) {
    const auto known = owners.find(identifier);
    if (known == owners.end()) {
        return;
    }
    const ProcessIdentifier process = known->second;
    owners.erase(known);
    if (std::ranges::none_of(owners, [process](const auto& other) { return other.second == process; })) {
        lastWindowVanished(process);
    }
}

} // namespace platform::compositor
