#include "Platform/Sway/Tree.h"

#include "Platform/Compositor/Outputs.h"

#include <algorithm>
#include <utility>

namespace platform::sway {

namespace {

using compositor::Output;
using compositor::WindowKind;
using corvid::CGRect;
using i3ipc::focusedWithin;
using i3ipc::isSet;
using i3ipc::Json;
using i3ipc::listIn;
using i3ipc::member;
using i3ipc::nameOf;
using i3ipc::numberOf;
using i3ipc::rectangleOf;
using i3ipc::shownWorkspace;
using i3ipc::textOf;

/// The rectangle of a window starts below its title bar, whose rectangle is separate and relative to the container
/// around: only its height counts.
CGRect frameOf(const Json& node) {
    CGRect frame = rectangleOf(node, "rect").value_or(CGRect{});
    const double titleBar = rectangleOf(node, "deco_rect").value_or(CGRect{}).size.height;
    frame.origin.y -= titleBar;
    frame.size.height += titleBar;
    return frame;
}

/// Only windows of X11 programs declare their kind.
WindowKind declaredKind(const Json& node) {
    const std::string_view type = textOf(node, "window_type");
    const Json* properties = member(node, "window_properties");
    const bool belongsToAnother = properties != nullptr && numberOf(*properties, "transient_for").value_or(0) > 0;
    const bool isNormal = type.empty() || type == "normal" || type == "unknown";
    return isNormal && !belongsToAnother ? WindowKind::standard : WindowKind::auxiliary;
}

std::string identifierOf(const Json& node) {
    const auto number = numberOf(node, "id");
    return number ? std::to_string(*number) : std::string();
}

/// A pending node, and the properties that it inherits from those around it.
struct Visit {
    const Json* node;
    bool isFloating = false;
    /// Of the output around.
    const Json* shownWorkspace = nullptr;
    /// The workspace around, if it is not the visible one.
    const Json* hiddenWorkspace = nullptr;
};

TreeWindow windowOf(const Visit& visit) {
    const Json& node = *visit.node;
    TreeWindow read{
        .identifier = identifierOf(node), .window = {}, .title = nameOf(node, "name"), .hiddenWorkspace = {}};
    if (visit.hiddenWorkspace != nullptr) {
        read.hiddenWorkspace = nameOf(*visit.hiddenWorkspace, "name");
    }
    read.window.clues.process = compositor::processOf(node, "pid");
    read.window.clues.applicationId = nameOf(node, "app_id");
    if (const Json* properties = member(node, "window_properties")) {
        read.window.clues.windowClass = nameOf(*properties, "class");
        read.window.clues.windowInstance = nameOf(*properties, "instance");
    }
    read.window.kind = declaredKind(node);
    read.window.isFullscreen = numberOf(node, "fullscreen_mode").value_or(0) > 0;
    read.window.isTiled = !visit.isFloating;
    read.window.isReady = true;
    read.window.frame = frameOf(node);
    return read;
}

/// Only containers that show a window have a process.
bool isWindow(const Json& node) {
    const Json* nodes = member(node, "nodes");
    const bool isLeaf = nodes == nullptr || nodes->empty();
    return isLeaf && numberOf(node, "pid") && numberOf(node, "id");
}

std::optional<Output> outputOf(const Json& node) {
    // Hidden windows are on an output, too, of a name that no other can have.
    const auto frame = rectangleOf(node, "rect");
    if (!frame || frame->size.width <= 0 || frame->size.height <= 0 || textOf(node, "name") == "__i3") {
        return std::nullopt;
    }
    const Json* workspace = shownWorkspace(node);
    const auto rect = workspace == nullptr ? std::nullopt : rectangleOf(*workspace, "rect");
    const auto inside = rect ? corvid::intersection(*rect, *frame) : std::nullopt;
    const bool isUsable = inside && inside->size.width > 0 && inside->size.height > 0;
    return Output{.frame = *frame, .workArea = isUsable ? *inside : *frame};
}

bool isOlder(const TreeWindow& one, const TreeWindow& other) {
    // Ids increase in the order of appearance; a longer one is larger.
    return std::pair(one.identifier.size(), std::string_view(one.identifier)) <
           std::pair(other.identifier.size(), std::string_view(other.identifier));
}

/// Adds the nodes inside a node, each with its inherited properties.
void addChildren(std::vector<Visit>& waiting, const Visit& visit, const char* name) {
    const Json* children = listIn(*visit.node, name);
    if (children == nullptr) {
        return;
    }
    for (const Json& child : *children) {
        const std::string_view type = textOf(child, "type");
        Visit next = visit;
        next.node = &child;
        next.isFloating = visit.isFloating || type == "floating_con";
        if (type == "workspace") {
            next.hiddenWorkspace = &child == visit.shownWorkspace ? nullptr : &child;
        } else if (type == "output") {
            next.shownWorkspace = shownWorkspace(child);
        }
        waiting.push_back(next);
    }
}

} // namespace

std::optional<Tree> readTree(const Json& answer) {
    if (textOf(answer, "type") != "root") {
        return std::nullopt;
    }
    Tree tree;
    // Even if it shows no window.
    const auto active = focusedWithin(answer);
    std::vector<Visit> waiting{{.node = &answer}};
    while (!waiting.empty()) {
        const Visit visit = waiting.back();
        waiting.pop_back();
        const Json& node = *visit.node;
        if (textOf(node, "type") == "output") {
            if (const auto output = outputOf(node)) {
                tree.outputs.push_back(*output);
                tree.outputs.back().isActive = active && active == numberOf(node, "id");
            }
        } else if (isWindow(node)) {
            tree.windows.push_back(windowOf(visit));
            if (isSet(node, "focused")) {
                tree.focused = tree.windows.back().identifier;
            }
        }
        addChildren(waiting, visit, "nodes");
        addChildren(waiting, visit, "floating_nodes");
    }
    std::ranges::sort(tree.windows, isOlder);
    compositor::putOriginFirst(tree.outputs);
    return tree;
}

} // namespace platform::sway
