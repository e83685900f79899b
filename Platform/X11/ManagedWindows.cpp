#include "Platform/X11/ManagedWindows.h"

#include "Platform/X11/Event.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform::x11 {

namespace {

// A number that the server answers well within a turn's time.
constexpr std::size_t mostChangesAtOnce = 256;
// A hanging window manager, or one that ended with our request pending, delays a window no longer than this.
constexpr std::chrono::seconds longestUnfinished{1};
// The delay before a repeated request to a server that did not reply in time.
constexpr std::chrono::seconds untilNextReading{1};
constexpr std::chrono::milliseconds timerLeeway{50};

constexpr std::uint32_t identityEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
constexpr std::uint32_t destructionEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY;

/// The windows that are shown without a window manager.
std::vector<xcb_window_t> readShownWindows(Connection& connection) {
    const auto tree = connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.raw(), connection.root()));
    if (!tree) {
        return {};
    }
    const std::span children(xcb_query_tree_children(tree.get()),
                             static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
    const std::size_t count = std::min(children.size(), largestBurst / sizeof(xcb_get_window_attributes_request_t));
    std::vector<xcb_get_window_attributes_cookie_t> requests;
    requests.reserve(count);
    for (const xcb_window_t child : children.first(count)) {
        requests.push_back(xcb_get_window_attributes(connection.raw(), child));
    }
    std::vector<xcb_window_t> shown;
    for (std::size_t index = 0; index < count; ++index) {
        const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(requests[index]);
        if (attributes && attributes->override_redirect == 0 && attributes->map_state == XCB_MAP_STATE_VIEWABLE) {
            shown.push_back(children[index]);
        }
    }
    return shown;
}

} // namespace

ManagedWindows::ManagedWindows(Connection& connection, EventSelection& selection, MainActor& mainActor)
    : connection(connection)
    , selection(selection)
    , mainActor(mainActor)
    , fence(connection) {
}

void ManagedWindows::follow(const std::vector<xcb_window_t>& clients) {
    if (follower == nullptr) {
        return;
    }
    if (!list) {
        const std::vector<xcb_window_t> there = clients.empty() ? readShownWindows(connection) : clients;
        unaskedFromStart.insert(there.begin(), there.end());
    }
    // Another window may have the id by now if the first one was already gone at the request.
    if (list != clients || !unknown.empty()) {
        list = clients;
        unknown.clear();
        isDue = true;
    }
}

void ManagedWindows::work() {
    isDue = false;
    if (connection.isBacklogged()) {
        workLater();
    } else if (list) {
        askAndReport(findChanges());
    }
}

void ManagedWindows::workLater() {
    isDue = false;
    retry = mainActor.schedule(mainActor.now() + untilNextReading, timerLeeway, [this] { isDue = true; });
}

ManagedWindows::Changes ManagedWindows::findChanges() {
    Changes changes;
    const std::set<xcb_window_t> listed(list->begin(), list->end());
    const auto isUnlisted = [&](const auto& entry) { return !listed.contains(entry); };
    std::erase_if(orphans, [&](const auto& orphan) { return isUnlisted(orphan.first); });

    std::set<xcb_window_t> seen;
    for (const xcb_window_t window : *list) {
        const auto known = windows.find(window);
        if (known != windows.end() && !known->second.isListed) {
            changes.returned.push_back(window);
        } else if (known == windows.end() && window != XCB_WINDOW_NONE && window != connection.root() &&
                   !unknown.contains(window) && seen.insert(window).second) {
            changes.arrived.push_back(window);
        }
    }
    // Present windows are handled before those that have left the list since.
    for (const xcb_window_t window : unaskedFromStart) {
        if (isUnlisted(window)) {
            changes.arrived.push_back(window);
        }
    }
    for (const auto& [window, facts] : windows) {
        if (facts.isListed && isUnlisted(window)) {
            changes.departed.push_back(window);
        }
    }
    for (const xcb_window_t window : std::exchange(renamed, {})) {
        if (windows.contains(window)) {
            changes.renamed.push_back(window);
        }
    }
    for (std::vector<xcb_window_t>* many : {&changes.arrived, &changes.departed}) {
        if (many->size() > mostChangesAtOnce) {
            many->resize(mostChangesAtOnce);
            isDue = true;
        }
    }
    return changes;
}

void ManagedWindows::askAndReport(const Changes& changes) {
    std::vector<ApplicationCluesRequest> arrivalRequests;
    arrivalRequests.reserve(changes.arrived.size());
    for (const xcb_window_t window : changes.arrived) {
        // Selected before the request, so that no change in between goes unnoticed.
        selection.selectForNow(window, identityEvents);
        arrivalRequests.emplace_back(connection, window);
    }
    std::vector<ApplicationCluesRequest> renameRequests;
    renameRequests.reserve(changes.renamed.size());
    for (const xcb_window_t window : changes.renamed) {
        renameRequests.emplace_back(connection, window);
    }
    std::vector<xcb_get_window_attributes_cookie_t> departureRequests;
    departureRequests.reserve(changes.departed.size());
    for (const xcb_window_t window : changes.departed) {
        selection.select(window, destructionEvents);
        departureRequests.push_back(xcb_get_window_attributes(connection.raw(), window));
    }
    std::optional<std::uint16_t> question;
    if (!changes.arrived.empty() || !changes.returned.empty()) {
        question = fence.send();
    }
    connection.flush();

    // New windows come first: an application that closes one and opens another always has a window.
    std::vector<xcb_window_t> awaited;
    bool isComplete = true;
    for (const xcb_window_t window : changes.returned) {
        takeReturn(window);
        awaited.push_back(window);
    }
    for (std::size_t index = 0; index < changes.arrived.size(); ++index) {
        const auto clues = arrivalRequests[index].read(connection);
        if (!clues && connection.isOutOfTime()) {
            isComplete = false;
            continue;
        }
        takeArrival(changes.arrived[index], clues);
        awaited.push_back(changes.arrived[index]);
    }
    for (std::size_t index = 0; index < changes.renamed.size(); ++index) {
        const auto clues = renameRequests[index].read(connection);
        if (clues && windows.contains(changes.renamed[index])) {
            follower->windowChangedIdentity(changes.renamed[index], *clues);
        } else if (!clues && connection.isOutOfTime()) {
            renamed.insert(changes.renamed[index]);
            isComplete = false;
        }
    }
    for (std::size_t index = 0; index < changes.departed.size(); ++index) {
        const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(departureRequests[index]);
        if (!attributes && connection.isOutOfTime()) {
            isComplete = false;
            continue;
        }
        takeDeparture(changes.departed[index], attributes != nullptr);
    }
    if (question) {
        awaitReadiness(*question, std::move(awaited));
    }
    if (!isComplete) {
        workLater();
    }
}

void ManagedWindows::takeArrival(xcb_window_t window, const std::optional<linux::ApplicationClues>& clues) {
    const bool wasThere = unaskedFromStart.erase(window) != 0;
    if (isOrphan(window, clues) || !clues) {
        unknown.insert(window);
        selection.select(window, XCB_EVENT_MASK_NO_EVENT);
        return;
    }
    const WindowInterest interest = follower->windowAppeared(window, *clues, wasThere);
    const ManagedWindow facts{.process = clues->process,
                              .arrival = wasThere ? 0 : ++arrivals,
                              .isListed = !wasThere || std::ranges::find(*list, window) != list->end(),
                              .isReady = wasThere,
                              .interest = interest};
    windows.insert_or_assign(window, facts);
    selectEvents(window, facts);
}

bool ManagedWindows::isOrphan(xcb_window_t window, const std::optional<linux::ApplicationClues>& clues) {
    const auto orphan = orphans.find(window);
    if (orphan == orphans.end()) {
        return false;
    }
    // The server has not noticed yet that the program is gone; when it does, the list changes.
    if (clues && clues->process == orphan->second) {
        return true;
    }
    orphans.erase(orphan);
    return false;
}

void ManagedWindows::takeReturn(xcb_window_t window) {
    ManagedWindow& facts = windows.at(window);
    facts.isListed = true;
    selectEvents(window, facts);
}

void ManagedWindows::takeDeparture(xcb_window_t window, bool exists) {
    const auto found = windows.find(window);
    if (found == windows.end()) {
        return;
    }
    if (!exists) {
        vanish(window);
        return;
    }
    found->second.isListed = false;
}

void ManagedWindows::handle(const xcb_generic_event_t& event) {
    if (const auto answered = fence.answer(event)) {
        const auto found = std::ranges::find(unfinished, *answered, &Unfinished::question);
        if (found != unfinished.end()) {
            finish(static_cast<std::size_t>(found - unfinished.begin()) + 1);
        }
    } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
        if (destroyed->event == destroyed->window) {
            vanish(destroyed->window);
        }
    } else if (const auto* changed = eventAs<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY)) {
        const ManagedWindow* facts = find(changed->window);
        if (facts != nullptr && facts->interest.identity && isApplicationClue(connection.atomTable(), changed->atom)) {
            renamed.insert(changed->window);
            isDue = true;
        }
    }
}

const ManagedWindow* ManagedWindows::find(xcb_window_t window) const {
    const auto found = windows.find(window);
    return found == windows.end() ? nullptr : &found->second;
}

void ManagedWindows::endIdentityInterest(xcb_window_t window) {
    const auto found = windows.find(window);
    if (found != windows.end() && found->second.interest.identity) {
        found->second.interest.identity = false;
        selectEvents(window, found->second);
    }
}

void ManagedWindows::forgetOwner(ProcessIdentifier process) {
    for (auto entry = windows.begin(); entry != windows.end();) {
        const auto& [window, facts] = *entry;
        if (facts.process != process) {
            ++entry;
            continue;
        }
        if (facts.isListed) {
            orphans.insert_or_assign(window, process);
        }
        selection.forget(window);
        entry = windows.erase(entry);
    }
    isDue = true;
}

void ManagedWindows::vanish(xcb_window_t window) {
    const auto found = windows.find(window);
    if (found == windows.end()) {
        return;
    }
    const ManagedWindow facts = found->second;
    windows.erase(found);
    selection.forget(window);
    follower->windowVanished(window, facts);
}

void ManagedWindows::awaitReadiness(std::uint16_t question, std::vector<xcb_window_t> awaited) {
    std::erase_if(awaited, [this](xcb_window_t window) {
        const ManagedWindow* facts = find(window);
        return facts == nullptr || facts->isReady;
    });
    if (awaited.empty()) {
        return;
    }
    unfinished.push_back({.question = question, .windows = std::move(awaited)});
    if (!patience) {
        patience =
            mainActor.schedule(mainActor.now() + longestUnfinished, timerLeeway, [this] { finish(unfinished.size()); });
    }
}

void ManagedWindows::finish(std::size_t count) {
    std::vector<xcb_window_t> finished;
    for (; count > 0; --count) {
        finished.insert(finished.end(), unfinished.front().windows.begin(), unfinished.front().windows.end());
        unfinished.pop_front();
    }
    patience.reset();
    if (!unfinished.empty()) {
        patience =
            mainActor.schedule(mainActor.now() + longestUnfinished, timerLeeway, [this] { finish(unfinished.size()); });
    }
    for (const xcb_window_t window : finished) {
        const auto found = windows.find(window);
        // A window that has left the list meanwhile is awaited again when it comes back.
        if (found != windows.end() && found->second.isListed && !found->second.isReady) {
            found->second.isReady = true;
            follower->windowBecameReady(window, found->second);
        }
    }
}

void ManagedWindows::selectEvents(xcb_window_t window, const ManagedWindow& facts) {
    const std::uint32_t identity = facts.interest.identity ? identityEvents : 0;
    const std::uint32_t destruction = facts.interest.destruction || !facts.isListed ? destructionEvents : 0;
    selection.select(window, identity | destruction);
}

} // namespace platform::x11
