#include "Platform/Hyprland/WindowAccess.h"

#include "Platform/Compositor/SettledFrame.h"
#include "Platform/Hyprland/Words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace platform::hyprland {

namespace {

using compositor::Json;
using compositor::member;
using compositor::WindowIdentifier;
using corvid::CGRect;

/// The events after which there may be other windows, or other outputs.
constexpr std::array changingEvents{"openwindow", "closewindow", "monitoraddedv2", "monitorremovedv2",
                                    "configreloaded"};

CGRect inflated(const CGRect& box, double by) {
    return {{box.origin.x - by, box.origin.y - by}, {box.size.width + 2 * by, box.size.height + 2 * by}};
}

std::optional<double> lengthIn(const std::optional<Json>& answer, const char* name) {
    const Json* value = answer ? member(*answer, name) : nullptr;
    const auto length = value == nullptr ? std::nullopt : compositor::coordinate(*value);
    return length && *length >= 0 ? length : std::nullopt;
}

} // namespace

WindowAccess::WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                           ProcessIdentifier ownProcess)
    : session(session)
    , table(table)
    , mainLoop(mainLoop)
    , reader(mainLoop, mainLoop.turnDeadline(), table, [this](Instant deadline) { return read(deadline); })
    , ownPlaces(ownProcess) {
    session.follow(*this);
}

AXError WindowAccess::place(const WindowIdentifier& window, const CGRect& frame, Instant deadline) {
    const auto found = known.find(window);
    if (found == known.end()) {
        return AXError::invalidUIElement;
    }
    const Client client = found->second;
    // A hidden window would be shown over the others of its group by a new size.
    const bool isHeld = client.window.isFullscreen || !client.window.isReady;
    const bool canRelease = !client.isMaximized || session.language() == Language::lua || table.focused() == window;
    if (isHeld || !canRelease || !session.isOpen()) {
        return AXError::cannotComplete;
    }
    CGRect asked = boxIn(frame, window);
    Release release{.isMaximized = client.isMaximized, .isTiled = client.window.isTiled};
    CGRect former = boxIn(client.window.frame, window);
    std::optional<corvid::CGSize> taken;
    constexpr int tries = 3;
    for (int count = 0; count < tries; ++count) {
        session.run([&](Language language) { return placingRequest(language, window, release, asked); }, deadline);
        if (mainLoop.now() >= deadline) {
            return AXError::cannotComplete;
        }
        const bool isResized = asked.size != former.size || release.isTiled;
        const auto settled = settledBox(window, isResized ? rest : Duration::zero(), deadline);
        if (!settled) {
            return known.contains(window) ? AXError::cannotComplete : AXError::invalidUIElement;
        }
        if (settled->size != asked.size) {
            // It has settled on that.
            taken = settled->size;
        }
        CGRect wanted = boxIn(frame, window);
        wanted.size = taken.value_or(wanted.size);
        if (*settled == wanted) {
            break;
        }
        release = {};
        former = *settled;
        asked = wanted;
    }
    return AXError::success;
}

std::optional<CGRect> WindowAccess::settledBox(const WindowIdentifier& window, Duration calm, Instant deadline) {
    const auto frame = compositor::settledFrame(mainLoop, calm, deadline, [&]() -> std::optional<CGRect> {
        const auto clients = readWindows(deadline);
        if (clients) {
            updateWindows(*clients);
        }
        const auto present = clients ? known.find(window) : known.end();
        return present == known.end() ? std::nullopt : std::optional(present->second.window.frame);
    });
    if (!frame) {
        return std::nullopt;
    }
    const CGRect box = boxIn(*frame, window);
    readBorder(window, deadline);
    // The table has its frame with the present border.
    std::vector<Client> again{known.at(window)};
    again.front().window.frame = box;
    addBorders(again);
    known.insert_or_assign(window, again.front());
    table.put(window, again.front().window);
    return box;
}

std::optional<corvid::CGPoint> WindowAccess::pointer() {
    const auto answer = session.read("cursorpos", session.deadline());
    return answer ? compositor::pointOf(*answer) : std::nullopt;
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    ownPlaces.set(title, topLeft);
    reader.update(session.deadline());
}

void WindowAccess::sessionClosed() {
    // Another compositor gives the same addresses to other windows.
    kinds.clear();
    known.clear();
    borders.clear();
    configuredBorder.reset();
    reader.end();
}

void WindowAccess::sessionReported(std::string_view event, std::string_view data) {
    if (std::ranges::find(changingEvents, event) != changingEvents.end()) {
        reader.expectChange();
    }
    if (event == "closewindow") {
        // Another window may get its address before the layout is read.
        const WindowIdentifier closed = "0x" + std::string(data);
        borders.erase(closed);
        table.remove(closed);
    } else if (event == "configreloaded") {
        configuredBorder.reset();
        borders.clear();
    }
}

std::optional<std::vector<Client>> WindowAccess::readWindows(Instant deadline) {
    const auto answer = session.read("clients", deadline);
    auto clients = answer ? readClients(*answer) : std::nullopt;
    if (!clients) {
        return std::nullopt;
    }
    {
        compositor::WindowKinds::Reading reading(kinds);
        for (Client& each : *clients) {
            reading.add(each.identifier, each.window);
        }
    }
    known.clear();
    addBorders(*clients);
    for (const Client& each : *clients) {
        known.emplace(each.identifier, each);
    }
    std::erase_if(borders, [this](const auto& entry) { return !known.contains(entry.first); });
    return clients;
}

std::optional<compositor::WindowTable::Contents> WindowAccess::read(Instant deadline) {
    const auto monitors = session.read("monitors", deadline);
    auto outputs = monitors ? readMonitors(*monitors) : std::nullopt;
    const auto active = outputs ? session.read("activewindow", deadline) : std::nullopt;
    if (!active) {
        return std::nullopt;
    }
    if (!configuredBorder) {
        configuredBorder = lengthIn(session.read("getoption general:border_size", deadline), "int").value_or(0);
    }
    const WindowIdentifier focused = compositor::nameOf(*active, "address");
    if (isAddress(focused)) {
        readBorder(focused, deadline);
    }
    const auto clients = readWindows(deadline);
    if (!clients) {
        return std::nullopt;
    }
    placeOwnWindows(*clients);
    compositor::WindowTable::Contents contents;
    for (const Client& each : *clients) {
        contents.windows.emplace_back(each.identifier, each.window);
    }
    if (known.contains(focused)) {
        contents.focused = focused;
    }
    contents.outputs = *std::move(outputs);
    return contents;
}

void WindowAccess::updateWindows(const std::vector<Client>& clients) {
    for (const WindowIdentifier& each : table.windows()) {
        if (!known.contains(each)) {
            table.remove(each);
        }
    }
    for (const Client& each : clients) {
        table.put(each.identifier, each.window);
    }
}

double WindowAccess::border(const WindowIdentifier& window) const {
    const auto found = borders.find(window);
    return found == borders.end() ? configuredBorder.value_or(0) : found->second;
}

void WindowAccess::readBorder(const WindowIdentifier& window, Instant deadline) {
    const std::string question = "getprop address:" + window + " ";
    const auto width = lengthIn(session.read(question + "border_size", deadline), "border_size");
    if (!width) {
        return;
    }
    const auto decorated = session.read(question + "decorate", deadline);
    const Json* isDecorated = decorated ? member(*decorated, "decorate") : nullptr;
    const bool hasNone = isDecorated != nullptr && isDecorated->is_boolean() && !isDecorated->get<bool>();
    borders.insert_or_assign(window, hasNone ? 0 : *width);
}

void WindowAccess::addBorders(std::vector<Client>& clients) const {
    for (Client& each : clients) {
        // A window that fills its output has none.
        if (!each.window.isFullscreen) {
            each.window.frame = inflated(each.window.frame, border(each.identifier));
        }
    }
}

CGRect WindowAccess::boxIn(const CGRect& frame, const WindowIdentifier& window) const {
    CGRect box = inflated(frame, -border(window));
    box.origin = {std::round(box.origin.x), std::round(box.origin.y)};
    box.size = {std::max(1.0, std::round(box.size.width)), std::max(1.0, std::round(box.size.height))};
    return box;
}

void WindowAccess::placeOwnWindows(const std::vector<Client>& clients) {
    for (const Client& each : clients) {
        const auto topLeft = ownPlaces.take(each.window.clues.process, each.title);
        if (!topLeft) {
            continue;
        }
        session.run(
            [&](Language language) {
                // In Lua its border is taken away.
                const double width = language == Language::lua ? 0 : border(each.identifier);
                return popoverRequest(language, each.identifier, each.isPinned,
                                      {topLeft->x + width, topLeft->y + width});
            },
            session.deadline());
    }
}

} // namespace platform::hyprland
