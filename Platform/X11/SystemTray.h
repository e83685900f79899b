#pragma once

#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/TrayPicture.h"
#include "Platform/X11/Turn.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace platform::x11 {

/// Panels that embed small windows in their tray (System Tray Protocol Specification 0.3, XEmbed Protocol Specification
/// 0.5): this requests docking from the owner of the selection `_NET_SYSTEM_TRAY_Sn`, and again from each new owner.
/// The window shows the picture; every click on it runs the item's action, because a menu would need a toolkit. Main
/// thread only.
class SystemTray final : public linux::TrayPlace {
public:
    /// All of them must outlive the tray.
    SystemTray(Connection& connection, EventSelection& selection, Turn& turn, MainActor& mainActor);

    /// Searches for the present panel, and listens for the next from now on: events of the kind
    /// `XCB_EVENT_MASK_STRUCTURE_NOTIFY` of the root must be selected by then. A request to a server that does not
    /// reply in time is repeated. Call it once.
    void start();

    /// Handles an event of any kind.
    void handle(const xcb_generic_event_t& event);

    [[nodiscard]] bool isOffered() const override { return owner != XCB_WINDOW_NONE; }
    void show(const linux::TrayContents& newContents) override;
    void hide() override;
    void update(Change change) override;
    [[nodiscard]] bool isShown() const override { return isMapped; }
    [[nodiscard]] std::optional<corvid::CGRect> frame() const override;

private:
    struct Looks {
        xcb_visualid_t visual = XCB_NONE;
        std::uint8_t depth = 0;
        TrayColour colour;
        [[nodiscard]] bool isTransparent() const { return visual != XCB_NONE; }
    };

    /// Finds the present owner of the selection; does nothing if it is known already.
    void lookForOwner();
    /// Empty if the server does not reply in time.
    [[nodiscard]] std::optional<xcb_window_t> readOwner() const;
    void askAgain();
    [[nodiscard]] Looks readLooks() const;

    void dock();
    void undock();
    void describeWindow() const;
    void handleOwnWindow(const xcb_generic_event_t& event);
    void paint() const;
    void clicked(corvid::CGPoint root) const;
    [[nodiscard]] std::optional<corvid::CGRect> inScreenSpace(const corvid::CGRect& root) const;

    Connection& connection;
    EventSelection& selection;
    Turn& turn;
    MainActor& mainActor;
    xcb_atom_t selectionName = XCB_ATOM_NONE;
    xcb_window_t owner = XCB_WINDOW_NONE;
    const linux::TrayContents* contents = nullptr;
    Looks looks;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_gcontext_t graphics = XCB_NONE;
    xcb_colormap_t colours = XCB_NONE;
    std::uint16_t width = 0;
    std::uint16_t height = 0;
    bool isEmbedded = false;
    bool isMapped = false;
    std::unique_ptr<ScheduledWork> question;
};

} // namespace platform::x11
