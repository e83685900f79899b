#include "Platform/X11/RunningApplications.h"

#include <algorithm>
#include <utility>

namespace platform::x11 {

namespace {

// The number of windows per reading in the search for one of a certain kind.
constexpr std::size_t windowsAtOnce = 16;

} // namespace

RunningApplications::RunningApplications(Connection& connection, Turn& turn, linux::MainLoop& mainLoop,
                                         ManagedWindows& windows, linux::Deliveries& deliveries,
                                         WindowReady windowReady)
    : RunningProcesses(mainLoop, deliveries)
    , connection(connection)
    , turn(turn)
    , windows(windows)
    , windowReady(std::move(windowReady)) {
}

void RunningApplications::start(linux::ApplicationIdentification& identifier, ApplicationCatalogue& names) {
    setNames(identifier, names);
    windows.start(*this);
}

WindowInterest RunningApplications::windowAppeared(xcb_window_t window, const linux::ApplicationClues& clues,
                                                   bool wasThere) {
    const Interest interest = RunningProcesses::windowAppeared(clues, wasThere);
    owned[clues.process].push_back(window);
    return {.identity = interest.identity, .destruction = interest.end};
}

void RunningApplications::windowChangedIdentity(xcb_window_t /*window*/, const linux::ApplicationClues& clues) {
    RunningProcesses::windowChangedIdentity(clues);
}

void RunningApplications::windowBecameReady(xcb_window_t window, const ManagedWindow& facts) {
    RunningProcesses::windowBecameReady(facts.process);
    windowReady(window, facts);
}

void RunningApplications::windowVanished(xcb_window_t window, const ManagedWindow& facts) {
    const auto found = owned.find(facts.process);
    if (found == owned.end()) {
        return;
    }
    std::erase(found->second, window);
    if (found->second.empty()) {
        owned.erase(found);
        lastWindowVanished(facts.process);
    }
}

bool RunningApplications::hasReadyWindow(ProcessIdentifier process) {
    return std::ranges::any_of(windowsOf(process), [this](xcb_window_t window) {
        const ManagedWindow* facts = windows.find(window);
        return facts != nullptr && facts->isListed && facts->isReady;
    });
}

std::vector<linux::ApplicationClues> RunningApplications::clues(ProcessIdentifier process) {
    std::vector<ApplicationCluesRequest> requests;
    for (const xcb_window_t window : windowsOf(process)) {
        if (requests.size() < windowsAtOnce) {
            requests.emplace_back(connection, window);
        }
    }
    std::vector<linux::ApplicationClues> answers;
    for (const ApplicationCluesRequest& request : requests) {
        auto answer = request.read(connection);
        if (answer && answer->process == process) {
            answers.push_back(*std::move(answer));
        }
    }
    return answers;
}

ActivationPolicy RunningApplications::activationPolicy(ProcessIdentifier process) {
    std::vector<xcb_window_t> listed = windowsOf(process);
    std::erase_if(listed, [this](xcb_window_t window) {
        const ManagedWindow* facts = windows.find(window);
        return facts == nullptr || !facts->isListed;
    });
    const auto isInTaskBars = [this](xcb_window_t window) {
        const WindowFacts* facts = turn.window(window);
        return facts != nullptr && facts->kind == WindowKind::standard && !facts->skipsTaskBars;
    };
    for (std::size_t first = 0; first < listed.size(); first += windowsAtOnce) {
        const auto begin = listed.begin() + static_cast<std::ptrdiff_t>(first);
        const auto end = listed.begin() + static_cast<std::ptrdiff_t>(std::min(first + windowsAtOnce, listed.size()));
        turn.readWindows({begin, end});
        if (std::any_of(begin, end, isInTaskBars)) {
            return ActivationPolicy::regular;
        }
    }
    return ActivationPolicy::accessory;
}

void RunningApplications::stopListening(ProcessIdentifier process) {
    for (const xcb_window_t window : windowsOf(process)) {
        windows.endIdentityInterest(window);
    }
}

void RunningApplications::forget(ProcessIdentifier process) {
    owned.erase(process);
    windows.forgetOwner(process);
}

std::vector<xcb_window_t> RunningApplications::windowsOf(ProcessIdentifier process) const {
    const auto found = owned.find(process);
    return found == owned.end() ? std::vector<xcb_window_t>{} : found->second;
}

} // namespace platform::x11
