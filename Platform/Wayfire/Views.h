#pragma once

#include "Platform/Compositor/WindowTable.h"
#include "Platform/Wayfire/Message.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace platform::wayfire {

/// An output as Wayfire lists it. The rectangle is in the space of all outputs.
struct OutputFacts {
    std::int64_t number = 0;
    corvid::CGRect frame;
    corvid::CGRect workArea;
    /// The visible workspace, and the number of workspaces in each direction.
    corvid::CGPoint workspace;
    corvid::CGSize grid{1, 1};

    friend bool operator==(const OutputFacts&, const OutputFacts&) = default;
};

/// The facts of a view beyond the table's data.
struct ViewFacts {
    std::string title;
    std::int64_t output = 0;
    /// The set of workspaces that it belongs to, and its own one in there.
    std::int64_t workspaceSet = 0;
    corvid::CGPoint workspace;
    /// The distance from the visible workspace to its own, in the output's space; zero on the visible one.
    corvid::CGPoint workspaceOffset;
    /// The limits of its outer size; zero where there is none.
    corvid::CGSize smallest;
    corvid::CGSize largest;

    friend bool operator==(const ViewFacts&, const ViewFacts&) = default;
};

struct View {
    compositor::WindowIdentifier identifier;
    compositor::Window window;
    ViewFacts facts;

    friend bool operator==(const View&, const View&) = default;
};

/// The outputs in an answer to "window-rules/list-outputs", the nearest to the origin first: there is no primary one.
/// Entries that make no sense are left out.
[[nodiscard]] std::vector<OutputFacts> readOutputs(const Json& answer);

[[nodiscard]] std::vector<compositor::Output> outputsOf(const std::vector<OutputFacts>& outputs);

/// A view of an event or a list (Wayfire 0.10, plugins/ipc-rules, `view_to_json`). Empty for one that is no window of a
/// user's, is not shown yet, or is on none of the outputs.
///
/// Wayfire tells the geometry of views in the space of their output, with the visible workspace at its origin. A view
/// on another workspace is told here as if that one was visible, so that it can be placed there.
[[nodiscard]] std::optional<View> readView(const Json& view, const std::vector<OutputFacts>& outputs);

/// The views in an answer to "window-rules/list-views", oldest first.
[[nodiscard]] std::vector<View> readViews(const Json& answer, const std::vector<OutputFacts>& outputs);

/// The frame's counterpart in a request, with its output: within the limits of the size, and on the view's workspace
/// unless it goes to another output. In whole points.
struct Goal {
    std::int64_t output = 0;
    /// In the output's space.
    corvid::CGRect geometry;

    friend bool operator==(const Goal&, const Goal&) = default;
};

/// Nothing where the view's output is gone.
[[nodiscard]] std::optional<Goal> goalFor(const corvid::CGRect& frame, const ViewFacts& view,
                                          const std::vector<OutputFacts>& outputs);

/// "window-rules/configure-view" with this goal.
[[nodiscard]] Request placingRequest(const compositor::WindowIdentifier& view, const Goal& goal);

/// The number in a request.
[[nodiscard]] std::int64_t numberOf(const compositor::WindowIdentifier& view);

} // namespace platform::wayfire
