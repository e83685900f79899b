#include "Platform/Wayfire/WindowAccess.h"

#include "Platform/Wayfire/TileLayout.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace platform::wayfire {

namespace {

using compositor::WindowIdentifier;

/// Wayfire applies a request after 100 ms at the latest, whatever the program does (0.10, transactions of views).
constexpr std::chrono::milliseconds longestTransaction{110};

/// The plugin "grid" is the only one that can (Wayfire 0.10, plugins/grid); without it a maximized window is placed all
/// the same, and draws itself as before.
Request releaseRequest(const WindowIdentifier& window, std::int64_t output) {
    return {.method = "grid/restore", .data = {{"view_id", numberOf(window)}, {"output_id", output}}};
}

Request focusRequest(const WindowIdentifier& window) {
    return {.method = "window-rules/focus-view", .data = {{"id", numberOf(window)}}};
}

Request infoRequest(const WindowIdentifier& window) {
    return {.method = "window-rules/view-info", .data = {{"id", numberOf(window)}}};
}

bool isAbout(const Json& event, const WindowIdentifier& window) {
    const Json* view = compositor::member(event, "view");
    return view != nullptr && compositor::numberOf(*view, "id") == numberOf(window);
}

std::optional<corvid::CGRect> geometryIn(const Json& object, const char* name) {
    const Json* view = compositor::member(object, name);
    return view == nullptr ? std::nullopt : compositor::rectangleOf(*view, "geometry");
}

} // namespace

WindowAccess::WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                           ProcessIdentifier ownProcess, Obstacle whyClosed)
    : session(session)
    , table(table)
    , mainLoop(mainLoop)
    , whyClosed(std::move(whyClosed))
    , reader(mainLoop, mainLoop.turnDeadline(), table, [this](Instant deadline) { return read(deadline); })
    , ownPlaces(ownProcess) {
    session.follow(*this);
}

AXError WindowAccess::place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) {
    const compositor::Window* known = table.find(window);
    const auto view = views.find(window);
    if (known == nullptr || view == views.end()) {
        return AXError::invalidUIElement;
    }
    const auto goal = goalFor(frame, view->second, outputs);
    if (known->isFullscreen || !goal || !session.isOpen()) {
        return AXError::cannotComplete;
    }
    const bool isReleased = known->isTiled;
    std::vector<Request> requests;
    if (isReleased) {
        addRelease(requests, window, view->second, deadline);
    }
    requests.push_back(placingRequest(window, *goal));
    if (goal->output != view->second.output && table.focused() == window) {
        // The focus stays on the output (Wayfire 0.10, `move_view_to_output`).
        requests.push_back(focusRequest(window));
    }
    if (mainLoop.now() >= deadline) {
        static_cast<void>(session.askAll(requests, deadline));
        return AXError::cannotComplete;
    }
    // Geometry is told as it will be, and only the events say that it is so.
    auto events = session.watch({"view-geometry-changed", "view-tiled"}, deadline);
    constexpr int tries = 2;
    AXError outcome = AXError::cannotComplete;
    for (int count = 0; count < tries; ++count) {
        if (!events || session.askAll(requests, deadline).empty()) {
            return AXError::cannotComplete;
        }
        outcome = awaitRest(*events, window, goal->geometry, isReleased && count == 0, deadline);
        if (!reader.update(deadline)) {
            return AXError::cannotComplete;
        }
        const compositor::Window* present = table.find(window);
        if (present == nullptr) {
            return AXError::invalidUIElement;
        }
        if (outcome != AXError::success || present->frame.size == goal->geometry.size) {
            break;
        }
        // A program that was busy may have kept its size because its time was over.
        requests = {placingRequest(window, *goal)};
    }
    return outcome;
}

void WindowAccess::addRelease(std::vector<Request>& requests, const WindowIdentifier& window, const ViewFacts& view,
                              Instant deadline) {
    // Its plugin would put a window back that is still in its layout.
    const auto layout = session.ask(layoutRequest(view), deadline);
    if (auto removing = layout ? removingRequest(view, window, *layout) : std::nullopt) {
        requests.push_back(*std::move(removing));
    }
    requests.push_back(releaseRequest(window, view.output));
}

AXError WindowAccess::awaitRest(Connection& events, const WindowIdentifier& window, const corvid::CGRect& geometry,
                                bool isReleased, Instant deadline) {
    bool hasMoved = false;
    const Instant begin = mainLoop.now();
    Instant last = begin;
    while (mainLoop.now() < deadline) {
        const auto event = events.receive(std::min(deadline, last + rest));
        if (events.isBroken()) {
            return AXError::cannotComplete;
        }
        if (event) {
            const bool isOurs = isAbout(*event, window);
            hasMoved = hasMoved || isOurs;
            // A window that is released moves twice, and the first event has the last goal already.
            if (isOurs && !isReleased && geometryIn(*event, "view") == geometry) {
                return AXError::success;
            }
            last = isOurs ? mainLoop.now() : last;
        } else if (mainLoop.now() >= last + rest) {
            const auto info = hasMoved ? std::nullopt : session.ask(infoRequest(window), deadline);
            // One that is gone, or stays as it is; Wayfire may tell the goal of the latter all the same.
            const bool isOver = info && mainLoop.now() >= begin + longestTransaction;
            if (hasMoved || isOver || (info && geometryIn(*info, "info") != geometry)) {
                return AXError::success;
            }
            last = mainLoop.now();
        }
    }
    return AXError::cannotComplete;
}

std::optional<corvid::CGPoint> WindowAccess::pointer() {
    const auto answer = session.ask({.method = "window-rules/get_cursor_position"}, session.deadline());
    const Json* position = answer ? compositor::member(*answer, "pos") : nullptr;
    return position == nullptr ? std::nullopt : compositor::pointOf(*position);
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    ownPlaces.set(title, topLeft);
    reader.update(session.deadline());
}

void WindowAccess::placeOwnWindows(const compositor::WindowTable::Contents& present) {
    for (const auto& [identifier, window] : present.windows) {
        const ViewFacts& facts = views.at(identifier);
        const auto topLeft = ownPlaces.take(window.clues.process, facts.title);
        const auto goal = topLeft ? goalFor({*topLeft, window.frame.size}, facts, outputs) : std::nullopt;
        if (!goal) {
            continue;
        }
        Request placing = placingRequest(identifier, *goal);
        placing.data["sticky"] = true;
        const Json number = numberOf(identifier);
        static_cast<void>(session.askAll(
            {
                std::move(placing),
                // Without the plugin "wm-actions" another window may cover it.
                {.method = "wm-actions/set-always-on-top", .data = {{"view_id", number}, {"state", true}}},
                focusRequest(identifier),
            },
            session.deadline()));
    }
}

void WindowAccess::sessionClosed() {
    views.clear();
    reader.end();
}

void WindowAccess::sessionReported(std::string_view event, const Json& /*content*/) {
    if (event.starts_with("view-")) {
        reader.expectChange();
    }
}

std::optional<compositor::WindowTable::Contents> WindowAccess::read(Instant deadline) {
    const auto answers = session.askAll({{.method = "window-rules/list-outputs"},
                                         {.method = "window-rules/list-views"},
                                         {.method = "window-rules/get-focused-view"}},
                                        deadline);
    if (answers.empty()) {
        return std::nullopt;
    }
    if (!answers[0].is_array() || !answers[1].is_array()) {
        // The user has unloaded the plugin.
        session.closeSoon();
        return std::nullopt;
    }
    outputs = readOutputs(answers[0]);
    views.clear();
    compositor::WindowTable::Contents contents;
    for (View& each : readViews(answers[1], outputs)) {
        views.emplace(each.identifier, std::move(each.facts));
        contents.windows.emplace_back(std::move(each.identifier), std::move(each.window));
    }
    contents.outputs = outputsOf(outputs);
    const Json* focused = compositor::member(answers[2], "info");
    const auto number = focused == nullptr ? std::nullopt : compositor::numberOf(*focused, "id");
    if (number && views.contains(std::to_string(*number))) {
        contents.focused = std::to_string(*number);
    }
    placeOwnWindows(contents);
    return contents;
}

} // namespace platform::wayfire
