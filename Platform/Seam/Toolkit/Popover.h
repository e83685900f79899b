#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Toolkit/View.h"

#include <memory>
#include <optional>

namespace platform {

/// A window that is attached to an anchor on the screen and shows one view, in that view's preferred size. Main thread
/// only.
class Popover {
public:
    /// Further causes that close it, besides `performClose`.
    enum class Behavior {
        applicationDefined = 0,
        /// A click outside, Escape, and the loss of the keyboard focus.
        transient = 1,
    };

    /// The edge of its anchor.
    enum class Edge {
        minX = 0,
        minY = 1,
        maxX = 2,
        maxY = 3,
    };

    /// Its anchor.
    struct Anchor {
        /// In points in the screen space; a click has no size. Empty if it is unknown.
        std::optional<corvid::CGRect> rect;
        /// Without a rectangle: whether the pointer is at the place of the user's request. Otherwise it opens in the
        /// corner of the screen where the panel has its items.
        bool isAtPointer = false;

        friend bool operator==(const Anchor&, const Anchor&) = default;
    };

    Popover() = default;
    Popover(const Popover&) = delete;
    Popover& operator=(const Popover&) = delete;
    virtual ~Popover() = default;

    /// Its content from its next opening on. The content is created at the first opening.
    virtual void setContentView(std::shared_ptr<const View> view) = 0;

    [[nodiscard]] virtual bool hasContentView() const = 0;

    virtual void setBehavior(Behavior behavior) = 0;

    /// Whether it opens and closes with an animation, unless the user has disabled animations.
    virtual void setAnimates(bool animates) = 0;

    /// Whether it is open or about to be.
    [[nodiscard]] virtual bool isShown() const = 0;

    /// Opens it, wholly within the visible part of the anchor's screen: below the anchor for `minY`, above it if the
    /// panel is at the bottom. If no toolkit is available, logs that, and opens nothing.
    virtual void show(const Anchor& anchor, Edge preferredEdge) = 0;

    /// Gives its window the keyboard focus.
    virtual void makeKey() = 0;

    /// Closes it as its user would.
    virtual void performClose() = 0;
};

} // namespace platform
