#include "Platform/Sway/WindowAccess.h"

#include "Platform/Compositor/SettledFrame.h"
#include "Platform/Sway/Commands.h"

#include <cmath>
#include <utility>

namespace platform::sway {

namespace {

using compositor::WindowIdentifier;
using i3ipc::EventType;
using i3ipc::Json;
using i3ipc::member;
using i3ipc::MessageType;
using i3ipc::numberOf;
using i3ipc::textOf;

corvid::CGRect rounded(const corvid::CGRect& frame) {
    return {{std::round(frame.origin.x), std::round(frame.origin.y)},
            {std::round(frame.size.width), std::round(frame.size.height)}};
}

compositor::WindowTable::Contents contentsOf(Tree tree) {
    compositor::WindowTable::Contents contents;
    for (TreeWindow& each : tree.windows) {
        contents.windows.emplace_back(std::move(each.identifier), std::move(each.window));
    }
    contents.focused = std::move(tree.focused);
    contents.outputs = std::move(tree.outputs);
    return contents;
}

} // namespace

WindowAccess::WindowAccess(Session& session, compositor::WindowTable& table, linux::MainLoop& mainLoop,
                           ProcessIdentifier ownProcess)
    : session(session)
    , table(table)
    , mainLoop(mainLoop)
    , ownProcess(ownProcess)
    , reader(mainLoop, mainLoop.turnDeadline(), table, [this](Instant deadline) { return read(deadline); })
    , ownPlaces(ownProcess) {
    session.follow(*this);
}

AXError WindowAccess::place(const WindowIdentifier& window, const corvid::CGRect& frame, Instant deadline) {
    const compositor::Window* known = table.find(window);
    if (known == nullptr) {
        return AXError::invalidUIElement;
    }
    if (known->isFullscreen || !session.isOpen()) {
        return AXError::cannotComplete;
    }
    const auto hidden = hiddenWorkspaces.find(window);
    const std::string commands =
        placingCommands(window, frame, hidden == hiddenWorkspaces.end() ? std::string() : hidden->second);
    const corvid::CGRect asked = rounded(frame);
    constexpr int tries = 2;
    std::optional<corvid::CGRect> settled;
    for (int count = 0; count < tries && settled != asked; ++count) {
        // Some commands may be refused, as for a window that is gone by now: the following reading shows their result.
        session.run(commands, deadline);
        settled = compositor::settledFrame(mainLoop, rest, deadline, [&]() -> std::optional<corvid::CGRect> {
            const compositor::Window* present = reader.update(deadline) ? table.find(window) : nullptr;
            return present == nullptr ? std::nullopt : std::optional(present->frame);
        });
        if (!settled) {
            return table.find(window) == nullptr ? AXError::invalidUIElement : AXError::cannotComplete;
        }
    }
    return AXError::success;
}

void WindowAccess::placeOwnWindow(const std::string& title, corvid::CGPoint topLeft) {
    ownPlaces.set(title, topLeft);
    // This way the window never appears elsewhere, the layout makes no room for it, and it has the focus from the
    // beginning: a later command could take the focus from a window that has got it meanwhile. An earlier rule for
    // another position runs first and does no harm.
    const std::string rule =
        "for_window " + ownWindowCriteria(ownProcess, title) + " \"" + popoverCommands(topLeft) + ", focus\"";
    if (!ownWindowRules.contains(rule) && session.run(rule, session.deadline())) {
        ownWindowRules.insert(rule);
    }
    reader.update(session.deadline());
}

void WindowAccess::sessionClosed() {
    ownWindowRules.clear();
    // Another compositor assigns the same numbers to other windows.
    kinds.clear();
    reader.end();
}

void WindowAccess::sessionReported(EventType type, const Json& content) {
    // A terminal may change its title many times a second, and titles only matter for windows of our own.
    const bool isTitle = type == EventType::window && textOf(content, "change") == "title";
    const Json* container = isTitle ? member(content, "container") : nullptr;
    const bool isOurs = container != nullptr && numberOf(*container, "pid") == ownProcess;
    if (type == EventType::workspace || (type == EventType::window && (!isTitle || isOurs))) {
        reader.expectChange();
    }
    if (type == EventType::workspace && textOf(content, "change") == "reload") {
        ownWindowRules.clear();
    }
}

std::optional<compositor::WindowTable::Contents> WindowAccess::read(Instant deadline) {
    const auto answer = session.ask(MessageType::getTree, "", deadline);
    auto tree = answer ? readTree(*answer) : std::nullopt;
    if (!tree) {
        return std::nullopt;
    }
    takeKinds(*tree);
    takeHiddenWorkspaces(*tree);
    placeOwnWindows(*tree);
    return contentsOf(*std::move(tree));
}

void WindowAccess::takeKinds(Tree& tree) {
    compositor::WindowKinds::Reading reading(kinds);
    for (TreeWindow& each : tree.windows) {
        reading.add(each.identifier, each.window);
    }
}

void WindowAccess::takeHiddenWorkspaces(const Tree& tree) {
    hiddenWorkspaces.clear();
    for (const TreeWindow& each : tree.windows) {
        if (!each.hiddenWorkspace.empty()) {
            hiddenWorkspaces.emplace(each.identifier, each.hiddenWorkspace);
        }
    }
}

void WindowAccess::placeOwnWindows(const Tree& tree) {
    for (const TreeWindow& each : tree.windows) {
        if (const auto topLeft = ownPlaces.take(each.window.clues.process, each.title)) {
            session.run("[con_id=" + each.identifier + "] " + popoverCommands(*topLeft), session.deadline());
        }
    }
}

} // namespace platform::sway
