#pragma once

#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/OwnWindows.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/ServerClock.h"
#include "Platform/X11/Turn.h"

#include <memory>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// The windows that a toolkit of the program has made over a connection of its own, by their XIDs. The window must
/// exist: the toolkit must have sent the request that creates it.
///
/// The keyboard focus is taken with the server's present time, and given back with the same time: any later change of
/// the focus by another client is newer, and wins (X11 protocol, SetInputFocus).
class OwnWindows final : public platform::OwnWindows {
public:
    /// The timeout for the mapping of a window that is to get the keyboard focus.
    static constexpr std::chrono::seconds patience{1};

    OwnWindows(Connection& connection, EventSelection& selection, Turn& turn, MainActor& mainActor);

    [[nodiscard]] Protocol protocol() const override { return Protocol::x11; }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void place(Number window, const std::string& title, corvid::CGPoint topLeft) override;
    void takeKeyboard(Number window) override;
    [[nodiscard]] bool hasKeyboard(Number window) override;
    [[nodiscard]] bool areBlended() override;

    /// Handles the event if it is about one of these windows.
    void handle(const xcb_generic_event_t& event);

private:
    /// A window that has the keyboard focus, or had it and may still be shown, and the focus before it.
    struct Loan {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_window_t owner = XCB_WINDOW_NONE;
        std::uint8_t ownersRevertTo = XCB_INPUT_FOCUS_POINTER_ROOT;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
    };

    /// Empty if the server has not replied in time.
    [[nodiscard]] std::optional<bool> isViewable(xcb_window_t window);
    void takeOnceViewable();
    void take(xcb_window_t window);
    void giveBack(xcb_window_t window);
    void stopWaiting();
    void selectEvents(xcb_window_t window);
    void setFocus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time);
    [[nodiscard]] std::vector<Loan>::iterator loanOf(xcb_window_t window);

    Connection& connection;
    EventSelection& selection;
    Turn& turn;
    MainActor& mainActor;
    ServerClock clock;
    xcb_atom_t compositorSelection = XCB_ATOM_NONE;
    /// The window that gets the keyboard focus once it is shown.
    xcb_window_t awaited = XCB_WINDOW_NONE;
    std::unique_ptr<ScheduledWork> endOfPatience;
    std::unique_ptr<ScheduledWork> nextLook;
    /// Oldest first.
    std::vector<Loan> loans;
};

} // namespace platform::x11
