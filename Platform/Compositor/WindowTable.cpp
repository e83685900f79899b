#include "Platform/Compositor/WindowTable.h"

#include <algorithm>
#include <set>
#include <utility>

namespace platform::compositor {

void WindowTable::setFollower(Follower& newFollower) {
    follower = &newFollower;
    for (const WindowIdentifier& identifier : windows()) {
        const Window& window = entries.at(identifier).window;
        newFollower.windowAppeared(identifier, window, true);
        if (window.isReady) {
            newFollower.windowBecameReady(identifier, window);
        }
    }
}

void WindowTable::open(Contents contents) {
    const bool wasOpen = std::exchange(accessIsOpen, true);
    removeAllBut(contents);
    for (auto& [identifier, window] : contents.windows) {
        if (const auto found = entries.find(identifier); found != entries.end()) {
            change(identifier, found->second, std::move(window));
        } else {
            add(identifier, std::move(window), true);
        }
    }
    focusedWindow = std::move(contents.focused);
    presentOutputs = std::move(contents.outputs);
    if (!wasOpen && accessChanged) {
        accessChanged();
    }
}

void WindowTable::close() {
    focusedWindow.reset();
    if (std::exchange(accessIsOpen, false) && accessChanged) {
        accessChanged();
    }
}

void WindowTable::update(Contents contents) {
    removeAllBut(contents);
    presentOutputs = std::move(contents.outputs);
    for (auto& [identifier, window] : contents.windows) {
        put(identifier, std::move(window));
    }
    focusedWindow = std::move(contents.focused);
}

void WindowTable::put(const WindowIdentifier& identifier, Window window) {
    if (const auto found = entries.find(identifier); found != entries.end()) {
        change(identifier, found->second, std::move(window));
    } else {
        add(identifier, std::move(window), false);
    }
}

void WindowTable::remove(const WindowIdentifier& identifier) {
    const auto found = entries.find(identifier);
    if (found == entries.end()) {
        return;
    }
    const Window window = std::move(found->second.window);
    entries.erase(found);
    if (focusedWindow == identifier) {
        focusedWindow.reset();
    }
    if (follower != nullptr) {
        follower->windowVanished(identifier, window);
    }
}

const Window* WindowTable::find(const WindowIdentifier& identifier) const {
    const auto found = entries.find(identifier);
    return found == entries.end() ? nullptr : &found->second.window;
}

std::vector<WindowIdentifier> WindowTable::windows() const {
    std::vector<WindowIdentifier> identifiers;
    identifiers.reserve(entries.size());
    for (const auto& [identifier, entry] : entries) {
        identifiers.push_back(identifier);
    }
    std::ranges::sort(identifiers, {}, [this](const WindowIdentifier& each) { return entries.at(each).order; });
    return identifiers;
}

std::vector<WindowIdentifier> WindowTable::windowsOf(ProcessIdentifier process) const {
    std::vector<WindowIdentifier> identifiers = windows();
    std::erase_if(identifiers, [&](const auto& each) { return entries.at(each).window.clues.process != process; });
    return identifiers;
}

std::uint64_t WindowTable::arrivalOf(const WindowIdentifier& identifier) const {
    const auto found = entries.find(identifier);
    return found == entries.end() ? 0 : found->second.arrival;
}

void WindowTable::removeAllBut(const Contents& contents) {
    std::set<WindowIdentifier> present;
    for (const auto& [identifier, window] : contents.windows) {
        present.insert(identifier);
    }
    for (const WindowIdentifier& known : windows()) {
        if (!present.contains(known)) {
            remove(known);
        }
    }
}

void WindowTable::add(const WindowIdentifier& identifier, Window window, bool wasThere) {
    Entry entry{.window = std::move(window), .order = ++orders, .arrival = wasThere ? 0 : ++arrivals};
    const Window& added = entries.insert_or_assign(identifier, std::move(entry)).first->second.window;
    if (follower == nullptr) {
        return;
    }
    follower->windowAppeared(identifier, added, wasThere);
    if (added.isReady) {
        follower->windowBecameReady(identifier, added);
    }
}

void WindowTable::change(const WindowIdentifier& identifier, Entry& entry, Window window) {
    const Window former = std::exchange(entry.window, std::move(window));
    // A window never stops being ready.
    entry.window.isReady = entry.window.isReady || former.isReady;
    if (follower == nullptr) {
        return;
    }
    if (entry.window.clues != former.clues) {
        follower->windowChangedIdentity(identifier, entry.window);
    }
    if (entry.window.isReady && !former.isReady) {
        follower->windowBecameReady(identifier, entry.window);
    }
}

} // namespace platform::compositor
