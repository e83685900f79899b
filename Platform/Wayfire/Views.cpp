#include "Platform/Wayfire/Views.h"

#include "Platform/Compositor/Outputs.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace platform::wayfire {

namespace {

using compositor::isSet;
using compositor::member;
using compositor::nameOf;
using compositor::Output;
using compositor::rectangleOf;
using compositor::WindowKind;
using corvid::CGPoint;
using corvid::CGRect;
using corvid::CGSize;

double lengthIn(const Json& object, const char* name) {
    const Json* value = member(object, name);
    const auto length = value == nullptr ? std::nullopt : compositor::coordinate(*value);
    return length ? std::max(0.0, *length) : 0;
}

CGSize sizeOf(const Json& object, const char* name) {
    const Json* value = member(object, name);
    return value == nullptr ? CGSize{} : CGSize{lengthIn(*value, "width"), lengthIn(*value, "height")};
}

std::optional<OutputFacts> readOutput(const Json& output) {
    const auto number = compositor::numberOf(output, "id");
    const auto frame = rectangleOf(output, "geometry");
    if (!number || !frame || frame->size.width <= 0 || frame->size.height <= 0) {
        return std::nullopt;
    }
    OutputFacts facts{.number = *number, .frame = *frame, .workArea = *frame, .workspace = {}};
    if (auto area = rectangleOf(output, "workarea")) {
        area->origin.x += frame->origin.x;
        area->origin.y += frame->origin.y;
        const auto inside = corvid::intersection(*area, *frame);
        const bool isUsable = inside && inside->size.width > 0 && inside->size.height > 0;
        facts.workArea = isUsable ? *inside : *frame;
    }
    if (const Json* workspace = member(output, "workspace")) {
        facts.workspace = {lengthIn(*workspace, "x"), lengthIn(*workspace, "y")};
        facts.grid = {std::max(1.0, lengthIn(*workspace, "grid_width")),
                      std::max(1.0, lengthIn(*workspace, "grid_height"))};
    }
    return facts;
}

const OutputFacts* find(const std::vector<OutputFacts>& outputs, std::int64_t number) {
    const auto found = std::ranges::find(outputs, number, &OutputFacts::number);
    return found == outputs.end() ? nullptr : &*found;
}

/// The distance in workspaces, within the grid.
double workspacesAway(double middle, double length, double visible, double count) {
    return std::clamp(std::floor(middle / length), -visible, std::max(-visible, count - 1 - visible));
}

/// A view belongs to the workspace of its centre (Wayfire, workspace-set.cpp). One that still shows on the visible
/// workspace is treated as there, because that is where the user sees it.
CGPoint workspaceOffsetOf(const CGRect& geometry, const OutputFacts& output) {
    const auto shown = corvid::intersection(geometry, {{0, 0}, output.frame.size});
    if (shown && shown->size.width > 0 && shown->size.height > 0) {
        return {};
    }
    const auto& [width, height] = output.frame.size;
    const double across =
        workspacesAway(geometry.origin.x + geometry.size.width / 2, width, output.workspace.x, output.grid.width);
    const double down =
        workspacesAway(geometry.origin.y + geometry.size.height / 2, height, output.workspace.y, output.grid.height);
    return {across * width, down * height};
}

/// Wayfire's limits are those of the program's own part, without a frame that Wayfire draws around it. Where it draws
/// none, that part includes the program's shadow, and is the larger one.
CGSize withFrame(const CGSize& limit, const CGRect& geometry, const std::optional<CGRect>& own) {
    const auto outer = [&](double CGSize::* length) {
        // A larger difference is no frame: the program has not taken its new size yet.
        constexpr double thickest = 80;
        const double around = own ? geometry.size.*length - own->size.*length : 0;
        const bool isFrame = around > 0 && around <= thickest;
        return limit.*length > 0 ? limit.*length + (isFrame ? around : 0) : 0;
    };
    return {outer(&CGSize::width), outer(&CGSize::height)};
}

double within(double length, double smallest, double largest) {
    const double most = largest > 0 ? largest : length;
    return std::max({1.0, smallest, std::min(length, most)});
}

bool contains(const CGRect& frame, CGPoint point) {
    return point.x >= frame.origin.x && point.x < frame.origin.x + frame.size.width && point.y >= frame.origin.y &&
           point.y < frame.origin.y + frame.size.height;
}

bool isOlder(const View& one, const View& other) {
    return numberOf(one.identifier) < numberOf(other.identifier);
}

} // namespace

std::vector<OutputFacts> readOutputs(const Json& answer) {
    std::vector<OutputFacts> outputs;
    if (answer.is_array()) {
        for (const Json& each : answer) {
            if (auto output = readOutput(each)) {
                outputs.push_back(*output);
            }
        }
    }
    compositor::putOriginFirst(outputs);
    return outputs;
}

std::vector<Output> outputsOf(const std::vector<OutputFacts>& outputs) {
    std::vector<Output> list;
    list.reserve(outputs.size());
    for (const OutputFacts& each : outputs) {
        list.push_back({.frame = each.frame, .workArea = each.workArea});
    }
    return list;
}

std::optional<View> readView(const Json& view, const std::vector<OutputFacts>& outputs) {
    const auto number = compositor::numberOf(view, "id");
    const auto geometry = rectangleOf(view, "geometry");
    const OutputFacts* output = find(outputs, compositor::numberOf(view, "output-id").value_or(-1));
    const bool isWindow = compositor::textOf(view, "role") == "toplevel" && isSet(view, "mapped");
    if (!number || *number < 0 || !geometry || output == nullptr || !isWindow) {
        return std::nullopt;
    }
    View read{.identifier = std::to_string(*number), .window = {}, .facts = {}};
    compositor::Window& window = read.window;
    window.clues.process = compositor::processOf(view, "pid");
    // For programs of X11 it is their class.
    window.clues.applicationId = nameOf(view, "app-id");
    window.clues.windowClass = window.clues.applicationId;
    window.kind = compositor::numberOf(view, "parent").value_or(-1) < 0 ? WindowKind::standard : WindowKind::auxiliary;
    window.isFullscreen = isSet(view, "fullscreen");
    window.isTiled = compositor::numberOf(view, "tiled-edges").value_or(0) != 0;
    window.isReady = true;
    ViewFacts& facts = read.facts;
    facts.title = nameOf(view, "title");
    facts.output = output->number;
    facts.workspaceOffset = workspaceOffsetOf(*geometry, *output);
    facts.workspaceSet = compositor::numberOf(view, "wset-index").value_or(0);
    facts.workspace = {output->workspace.x + facts.workspaceOffset.x / output->frame.size.width,
                       output->workspace.y + facts.workspaceOffset.y / output->frame.size.height};
    const auto own = rectangleOf(view, "base-geometry");
    facts.smallest = withFrame(sizeOf(view, "min-size"), *geometry, own);
    facts.largest = withFrame(sizeOf(view, "max-size"), *geometry, own);
    window.frame = {{geometry->origin.x - facts.workspaceOffset.x + output->frame.origin.x,
                     geometry->origin.y - facts.workspaceOffset.y + output->frame.origin.y},
                    geometry->size};
    return read;
}

std::vector<View> readViews(const Json& answer, const std::vector<OutputFacts>& outputs) {
    std::vector<View> views;
    if (answer.is_array()) {
        for (const Json& each : answer) {
            if (auto view = readView(each, outputs)) {
                views.push_back(*std::move(view));
            }
        }
    }
    std::ranges::sort(views, isOlder);
    return views;
}

std::optional<Goal> goalFor(const CGRect& frame, const ViewFacts& view, const std::vector<OutputFacts>& outputs) {
    const OutputFacts* output = find(outputs, view.output);
    if (output == nullptr) {
        return std::nullopt;
    }
    const CGPoint middle{frame.origin.x + frame.size.width / 2, frame.origin.y + frame.size.height / 2};
    const auto there =
        std::ranges::find_if(outputs, [&](const OutputFacts& each) { return contains(each.frame, middle); });
    CGPoint offset = view.workspaceOffset;
    if (there != outputs.end() && there->number != output->number) {
        output = &*there;
        offset = {};
    }
    return Goal{.output = output->number,
                .geometry = {{std::round(frame.origin.x - output->frame.origin.x + offset.x),
                              std::round(frame.origin.y - output->frame.origin.y + offset.y)},
                             {within(std::round(frame.size.width), view.smallest.width, view.largest.width),
                              within(std::round(frame.size.height), view.smallest.height, view.largest.height)}}};
}

Request placingRequest(const compositor::WindowIdentifier& view, const Goal& goal) {
    const auto whole = [](double number) { return static_cast<std::int64_t>(number); };
    return {.method = "window-rules/configure-view",
            .data = {{"id", numberOf(view)},
                     {"output_id", goal.output},
                     {"geometry",
                      {{"x", whole(goal.geometry.origin.x)},
                       {"y", whole(goal.geometry.origin.y)},
                       {"width", whole(goal.geometry.size.width)},
                       {"height", whole(goal.geometry.size.height)}}}}};
}

std::int64_t numberOf(const compositor::WindowIdentifier& view) {
    std::int64_t number = 0;
    std::from_chars(view.data(), view.data() + view.size(), number);
    return number;
}

} // namespace platform::wayfire
