#pragma once

#include "CorvidKit/Publisher.h"
#include "CorvidKit/UpdateCenter.h"
#include "Platform/Seam/Desktop/StatusItem.h"
#include "Platform/Seam/Toolkit/Popover.h"
#include "Platform/Seam/Toolkit/View.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace corvid {

/// The program's item in the panel: the symbol that follows the state, the dot of a due update reminder, and the
/// popover that a click opens. Main thread only; anything else stops the process.
class MenuBarController : public std::enable_shared_from_this<MenuBarController> {
    class Made {
        friend class MenuBarController;
        Made() = default;
    };

public:
    /// Names the symbol for the present state.
    using Symbol = std::function<std::string()>;

    /// The one made last, until it is released; null before.
    [[nodiscard]] static const std::shared_ptr<MenuBarController>& shared() { return sharedController(); }

    /// Lets go of it, before the desktop goes on which it stands.
    static void releaseShared() { sharedController().reset(); }

    /// Puts an item into the panel and becomes the shared one. `title` is the program's name for people. `changes`
    /// fires before the state changes; the symbol is read in a later turn, after the change. `popover` is to show
    /// `content`, and must outlive the controller.
    [[nodiscard]] static std::shared_ptr<MenuBarController> make(std::string title,
                                                                 std::shared_ptr<const platform::View> content,
                                                                 platform::Popover& popover, Publisher<>& changes,
                                                                 Symbol symbol);

    MenuBarController(Made, std::string title, std::shared_ptr<const platform::View> content,
                      platform::Popover& popover, Symbol symbol);
    MenuBarController(const MenuBarController&) = delete;
    MenuBarController& operator=(const MenuBarController&) = delete;
    ~MenuBarController() = default;

    /// Opens the popover at the item, with the keyboard focus; without the item's position, in the corner of the items.
    /// Without effect while it is open.
    void open();

    /// Closes the popover if it is open.
    void close();

    /// Handles a click on the item: closes or opens the popover. `position` is the click's, in points in the screen
    /// space; without one the popover opens at the item or, if the item's position is unknown too, at the pointer.
    void toggle(std::optional<CGPoint> position);

    /// Shows the dot whenever the center's reminder is due, in place of an earlier center's. The center may end before
    /// the controller.
    void showUpdateBadge(UpdateCenter& updates);

    /// The item, for further additions by the program.
    [[nodiscard]] platform::StatusItem& statusItem() { return *item; }

private:
    static std::shared_ptr<MenuBarController>& sharedController();
    [[nodiscard]] static platform::Image badged(const platform::Image& image);

    void follow(Publisher<>& changes);
    void updateIcon();
    void open(const platform::Popover::Anchor& anchor);

    std::unique_ptr<platform::StatusItem> item;
    platform::Popover& popover;
    std::string title;
    Symbol symbol;
    Subscription changesSubscription;
    Subscription badgeSubscription;
    bool showsBadge = false;
};

} // namespace corvid
