#include "Platform/Hyprland/WindowAccess.h"

#include "Platform/Hyprland/Words.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <thread>
#include <utility>

namespace platform::hyprland {

namespace {

using compositor::Json;
using compositor::member;
using compositor::WindowIdentifier;
using corvid::CGRect;

/// The interval between readings of a frame that may still change.
constexpr std::chrono::milliseconds step{5};
constexpr std::chrono::milliseconds retryLeeway{100};

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
    , ownProcess(ownProcess) {
    session.follow(*this);
}

void WindowAccess::refresh(Instant deadline) {
    if (table.isOpen()) {
        update(deadline);
    }
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
    std::optional<CGRect> frame;
    Instant since = mainLoop.now();
    while (auto clients = readWindows(deadline)) {
        updateWindows(*clients);
        const auto present = known.find(window);
        if (present == known.end()) {
            return std::nullopt;
        }
        const Instant now = mainLoop.now();
        if (frame != present->second.window.frame) {
            frame = present->second.window.frame;
            since = now;
        }
        if (now - since >= calm) {
            const CGRect box = boxIn(*frame, window);
            readBorder(window, deadline);
            // The table has its frame with the present border.
            std::vector<Client> again{present->second};
            again.front().window.frame = box;
            addBorders(again);
            known.insert_or_assign(window, again.front());
            table.put(window, again.front().window);
            return box;
        }
        if (now + step >= deadline) {
            return std::nullopt;
        }
        std::this_thread::sleep_for(step);
    }
    return std::nullopt;
}

std::optional<corvid::CGPoint> WindowAccess::pointer() {
    const auto answer = session.read("cursorpos", session.deadline());
    const Json* x = answer ? member(*answer, "x") : nullptr;
    const Json* y = answer ? member(*answer, "y") : nullptr;
    const auto across = x == nullptr ? std::nullopt : compositor::coordinate(*x);
    const auto down = y == nullptr ? std::nullopt : compositor::coordinate(*y);
    return across && down ? std::optional(corvid::CGPoint{*across, *down}) : std::nullopt;
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    ownPlaces[title] = {.topLeft = topLeft, .isDue = true};
    update(session.deadline());
}

void WindowAccess::sessionOpened() {
    auto reading = readAll(session.deadline());
    if (!reading) {
        updateOnceAnswering();
        return;
    }
    compositor::WindowTable::Contents contents;
    for (const Client& each : reading->clients) {
        contents.windows.emplace_back(each.identifier, each.window);
    }
    contents.focused = std::move(reading->focused);
    contents.outputs = std::move(reading->outputs);
    table.open(std::move(contents));
}

void WindowAccess::sessionClosed() {
    retry.reset();
    isStale = false;
    // Another compositor gives the same addresses to other windows.
    kinds.clear();
    known.clear();
    borders.clear();
    configuredBorder.reset();
    table.close();
}

void WindowAccess::sessionReported(std::string_view event, std::string_view data) {
    isStale = isStale || std::ranges::find(changingEvents, event) != changingEvents.end();
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

void WindowAccess::sessionIsQuiet() {
    if (isStale && session.isOpen() && !update(session.deadline())) {
        updateOnceAnswering();
    }
}

void WindowAccess::updateOnceAnswering() {
    retry = mainLoop.schedule(mainLoop.now() + Session::untilRetry, retryLeeway, [this] {
        if (!session.isOpen()) {
            return;
        }
        if (!table.isOpen()) {
            sessionOpened();
        } else if (!update(session.deadline())) {
            updateOnceAnswering();
        }
    });
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
    return clients;
}

std::optional<WindowAccess::Reading> WindowAccess::readAll(Instant deadline) {
    const auto monitors = session.read("monitors", deadline);
    auto outputs = monitors ? readMonitors(*monitors) : std::nullopt;
    const auto active = outputs ? session.read("activewindow", deadline) : std::nullopt;
    if (!active) {
        return std::nullopt;
    }
    if (!configuredBorder) {
        configuredBorder = lengthIn(session.read("getoption general:border_size", deadline), "int").value_or(0);
    }
    Reading reading;
    if (const WindowIdentifier address = compositor::nameOf(*active, "address"); isAddress(address)) {
        reading.focused = address;
        readBorder(address, deadline);
    }
    auto clients = readWindows(deadline);
    if (!clients) {
        return std::nullopt;
    }
    if (reading.focused && !known.contains(*reading.focused)) {
        reading.focused.reset();
    }
    reading.clients = *std::move(clients);
    reading.outputs = *std::move(outputs);
    return reading;
}

bool WindowAccess::update(Instant deadline) {
    auto reading = readAll(deadline);
    if (!reading || !table.isOpen()) {
        return false;
    }
    isStale = false;
    placeOwnWindows(reading->clients);
    updateTable(*std::move(reading));
    return true;
}

void WindowAccess::updateTable(Reading reading) {
    // Before the notifications of new windows, because an observer may request the rest.
    table.setOutputs(std::move(reading.outputs));
    updateWindows(reading.clients);
    table.setFocused(std::move(reading.focused));
}

void WindowAccess::updateWindows(const std::vector<Client>& clients) {
    for (const WindowIdentifier& each : table.windows()) {
        if (!known.contains(each)) {
            borders.erase(each);
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
        const auto place = ownPlaces.find(each.title);
        if (each.window.clues.process != ownProcess || place == ownPlaces.end() || !place->second.isDue) {
            continue;
        }
        place->second.isDue = false;
        session.run(
            [&](Language language) {
                // In Lua its border is taken away.
                const double width = language == Language::lua ? 0 : border(each.identifier);
                const corvid::CGPoint topLeft = place->second.topLeft;
                return popoverRequest(language, each.identifier, each.isPinned, {topLeft.x + width, topLeft.y + width});
            },
            session.deadline());
    }
}

} // namespace platform::hyprland
