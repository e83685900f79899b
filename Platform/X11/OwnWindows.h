#pragma once

#include "Platform/MainActor.h"
#include "Platform/OwnWindows.h"
#include "Platform/X11/EventSelection.h"
#include "Platform/X11/ServerClock.h"
#include "Platform/X11/Turn.h"

#include <memory>
#include <string_view>
#include <vector>

namespace platform::x11 {

/// The windows that a toolkit of the program has made through a connection of its own, by their XIDs. The window has to
/// exist: the toolkit must have sent what makes it.
///
/// The keyboard is taken with the server's time of that moment, and given back with the same: whatever anybody has done
/// to the focus since then is newer, and holds (X11 protocol, SetInputFocus).
class OwnWindows final : public platform::OwnWindows {
public:
    /// How long a window that is to have the keyboard may take to be shown.
    static constexpr std::chrono::seconds patience{1};

    OwnWindows(Connection& connection, EventSelection& selection, Turn& turn, MainActor& mainActor);

    [[nodiscard]] Protocol protocol() const override { return Protocol::x11; }

    [[nodiscard]] std::optional<corvid::CGPoint> pointer() override;
    void place(Number window, const std::string& title, corvid::CGPoint topLeft) override;
    void takeKeyboard(Number window) override;
    [[nodiscard]] bool hasKeyboard(Number window) override;
    [[nodiscard]] bool areBlended() override;

    /// Looks whether the event is about one of these windows.
    void handle(const xcb_generic_event_t& event);

private:
    /// A window that has the keyboard, or had it and may still be shown, and whom it took it from.
    struct Loan {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_window_t owner = XCB_WINDOW_NONE;
        std::uint8_t ownersRevertTo = XCB_INPUT_FOCUS_POINTER_ROOT;
        xcb_timestamp_t time = XCB_CURRENT_TIME;
    };

    /// Nothing where the server has not answered in time.
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
    /// The window that gets the keyboard once it is shown.
    xcb_window_t awaited = XCB_WINDOW_NONE;
    std::unique_ptr<ScheduledWork> endOfPatience;
    std::unique_ptr<ScheduledWork> nextLook;
    /// Oldest first.
    std::vector<Loan> loans;
};

} // namespace platform::x11
