#include "Tessel/PlacementMemory.h"

#include "Platform/Seam/Desktop/RunningApplications.h"
#include "Platform/Seam/Platform.h"

#include <algorithm>
#include <any>
#include <map>
#include <utility>

namespace tessel {

using platform::AXError;
using platform::AXUIElement;
using platform::ProcessIdentifier;

namespace {

/// The open windows of a process; empty if it does not answer.
std::optional<std::vector<AXUIElement>> openWindows(ProcessIdentifier process) {
    platform::Accessibility& accessibility = platform::current().desktop.accessibility;
    const auto value =
        accessibility.copyAttributeValue(accessibility.applicationElement(process), platform::AXAttribute::windows);
    if (!value && value.error() == AXError::cannotComplete) {
        return std::nullopt;
    }
    const auto* windows = value ? std::get_if<std::vector<AXUIElement>>(&*value) : nullptr;
    return windows == nullptr ? std::vector<AXUIElement>() : *windows;
}

PlacementTrail::Answer answerOf(const WindowMover::Attempt& made) {
    using enum PlacementTrail::Answer;
    return made.outcome == WindowMover::Outcome::unanswered ? missing : given;
}

} // namespace

const PlacementTrail& PlacementMemory::trail(const AXUIElement& window) const {
    static const PlacementTrail none;
    const auto known = std::ranges::find(windows, window, &Remembered::window);
    return known == windows.end() ? none : known->trail;
}

void PlacementMemory::add(const AXUIElement& window, const WindowMover::Attempt& made) {
    if (!made.before || !made.placed || !made.process) {
        return;
    }
    auto known = find(window);
    if (known == windows.end()) {
        if (!terminations) {
            terminations.emplace(platform::WorkspaceNotification::didTerminateApplication,
                                 platform::current().desktop.runningApplications.notificationCenter(),
                                 [this](const platform::Notification& notification) { forgetEnded(notification); });
        }
        forgetClosed();
        known = windows.insert(windows.end(), Remembered{.window = window, .process = *made.process, .trail = {}});
    }
    known->trail.add(*made.before, *made.placed, answerOf(made));
    std::rotate(known, known + 1, windows.end());
    forgetPointless();
    if (windows.size() > mostWindows) {
        windows.erase(windows.begin());
    }
}

void PlacementMemory::goBack(const AXUIElement& window, const WindowMover::Attempt& made) {
    if (const auto known = find(window); known != windows.end() && made.before && made.placed) {
        known->trail.goBack(*made.before, *made.placed, answerOf(made));
        forgetPointless();
    }
}

void PlacementMemory::amend(const AXUIElement& window, const WindowMover::Attempt& made) {
    if (const auto known = find(window); known != windows.end() && made.placed) {
        known->trail.amend(*made.placed, answerOf(made));
        forgetPointless();
    }
}

std::vector<PlacementMemory::Remembered>::iterator PlacementMemory::find(const AXUIElement& window) {
    return std::ranges::find(windows, window, &Remembered::window);
}

// Another application may get the process id, and with it the ids of the windows.
void PlacementMemory::forgetEnded(const platform::Notification& notification) {
    const auto found = notification.userInfo.find(platform::WorkspaceNotification::applicationKey);
    const auto* application = found == notification.userInfo.end()
                                  ? nullptr
                                  : std::any_cast<platform::RunningApplicationReference>(&found->second);
    if (application != nullptr && *application != nullptr) {
        std::erase_if(windows, [process = (*application)->processIdentifier()](const Remembered& remembered) {
            return remembered.process == process;
        });
    }
}

// No event reports a closed window, so the remembered ones are looked up before another one is added.
void PlacementMemory::forgetClosed() {
    std::map<ProcessIdentifier, std::optional<std::vector<AXUIElement>>> open;
    for (const Remembered& remembered : windows) {
        if (!open.contains(remembered.process)) {
            open.emplace(remembered.process, openWindows(remembered.process));
        }
    }
    std::erase_if(windows, [&open](const Remembered& remembered) {
        const auto& present = open.at(remembered.process);
        return present && std::ranges::find(*present, remembered.window) == present->end();
    });
}

void PlacementMemory::forgetPointless() {
    std::erase_if(windows, [](const Remembered& remembered) { return remembered.trail.isEmpty(); });
}

} // namespace tessel
