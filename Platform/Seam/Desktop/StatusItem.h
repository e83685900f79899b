#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Image.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One line of the menu that a panel shows for a status item.
struct StatusMenuLine {
    /// In the user's language; empty for a dividing line.
    std::string title;
    bool isEnabled = true;
    /// With a check mark, on or off; empty for a line without one.
    std::optional<bool> isChecked;
    /// Called on the main thread when the line is chosen.
    std::function<void()> action;
};

/// A small picture in the panel. Destroying it removes it. Main thread only, including callbacks.
///
/// Panels start and end: an item created without a panel appears when a panel starts, and again after its restart.
class StatusItem {
public:
    /// `position` is the place of the click, in points in the screen space; empty if the panel does not report it.
    using Action = std::function<void(std::optional<corvid::CGPoint> position)>;

    StatusItem() = default;
    StatusItem(const StatusItem&) = delete;
    StatusItem& operator=(const StatusItem&) = delete;
    virtual ~StatusItem() = default;

    /// Whether a panel shows it now.
    [[nodiscard]] virtual bool isShown() const = 0;

    /// Its frame, in points in the screen space; empty if the panel does not report it.
    [[nodiscard]] virtual std::optional<corvid::CGRect> frame() const = 0;

    virtual void setImage(const Image& image) = 0;

    /// Its name for people: the heading of the tool tip, and the accessibility label.
    virtual void setTitle(std::string_view title) = 0;

    /// The tool tip's text below the title; empty for none.
    virtual void setToolTip(std::string_view text) = 0;

    /// The effect of a click. The action may destroy the item.
    virtual void setAction(Action action) = 0;

    /// The menu of a secondary click; panels that show only menus show it on every click.
    virtual void setMenu(std::vector<StatusMenuLine> lines) = 0;
};

/// The panel's area for status items. Main thread only.
class StatusBar {
public:
    StatusBar() = default;
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    virtual ~StatusBar() = default;

    /// The symbol of that name as a picture for an item; empty if there is no such symbol.
    [[nodiscard]] virtual std::optional<Image> symbolImage(std::string_view name,
                                                           std::string_view accessibilityDescription) const = 0;

    /// A square item without picture, title and action. The panel stores the item's position under `autosaveName`.
    /// Never null: without a panel the item is merely not shown.
    [[nodiscard]] virtual std::unique_ptr<StatusItem> createStatusItem(std::string_view autosaveName) = 0;
};

} // namespace platform
