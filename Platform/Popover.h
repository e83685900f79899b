#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/View.h"

#include <memory>
#include <optional>

namespace platform {

/// A window that hangs at something on the screen and holds one view, as large as that view wants to be. Main thread
/// only.
class Popover {
public:
    /// What closes it besides `performClose`.
    enum class Behavior {
        applicationDefined = 0,
        /// A click outside, Escape, and the loss of the keyboard.
        transient = 1,
    };

    /// The edge of what it hangs at.
    enum class Edge {
        minX = 0,
        minY = 1,
        maxX = 2,
        maxY = 3,
    };

    /// What it hangs at.
    struct Anchor {
        /// In points in the screen space; a click has no size. Nothing where that is not known.
        std::optional<corvid::CGRect> rect;
        /// Where the rectangle is not known: whether the pointer is where the user asked for the popover. Otherwise it
        /// goes to the corner of the screen where the panel has its items.
        bool isAtPointer = false;

        friend bool operator==(const Anchor&, const Anchor&) = default;
    };

    Popover() = default;
    Popover(const Popover&) = delete;
    Popover& operator=(const Popover&) = delete;
    virtual ~Popover() = default;

    /// What it shows from its next opening on. Nothing of it is made before the first.
    virtual void setContentView(std::shared_ptr<const View> view) = 0;

    [[nodiscard]] virtual bool hasContentView() const = 0;

    virtual void setBehavior(Behavior behavior) = 0;

    /// Whether it opens and closes with a transition, unless the user wants less motion.
    virtual void setAnimates(bool animates) = 0;

    /// Whether it is open or about to be.
    [[nodiscard]] virtual bool isShown() const = 0;

    /// Opens it, wholly within the visible part of the anchor's screen: below the anchor for `minY`, above it where the
    /// panel is at the bottom. A toolkit that cannot be had is logged, and nothing opens.
    virtual void show(const Anchor& anchor, Edge preferredEdge) = 0;

    /// Gives its window the keyboard.
    virtual void makeKey() = 0;

    /// Closes it as its user would.
    virtual void performClose() = 0;
};

} // namespace platform
