#include "Platform/X11/OwnWindows.h"

#include "Platform/Linux/Windows/ScreenSpace.h"
#include "Platform/X11/Event.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

namespace platform::x11 {

OwnWindows::OwnWindows(Connection& connection, EventSelection& selection, Turn& turn, MainActor& mainActor)
    : connection(connection)
    , selection(selection)
    , turn(turn)
    , mainActor(mainActor)
    , clock(connection) {
}

std::optional<corvid::CGPoint> OwnWindows::pointer() {
    const RootFacts* root = turn.root();
    const auto pointer =
        connection.reply<xcb_query_pointer_reply_t>(xcb_query_pointer(connection.raw(), connection.root()));
    if (root == nullptr || !pointer || pointer->same_screen == 0) {
        return std::nullopt;
    }
    const corvid::CGPoint position{static_cast<double>(pointer->root_x), static_cast<double>(pointer->root_y)};
    return linux::inScreenSpace(position, root->monitors.front());
}

void OwnWindows::place(Number window, const std::string& /*title*/, corvid::CGPoint topLeft) {
    const RootFacts* root = turn.root();
    if (root == nullptr) {
        return;
    }
    const auto [x, y] = linux::fromAccessibilitySpace(topLeft, root->monitors.front());
    const std::array<std::int32_t, 2> position{static_cast<std::int32_t>(std::lround(x)),
                                               static_cast<std::int32_t>(std::lround(y))};
    xcb_configure_window(connection.raw(), static_cast<xcb_window_t>(window), XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y,
                         position.data());
    connection.flush();
}

void OwnWindows::takeKeyboard(Number window) {
    stopWaiting();
    // Selected before the request, so that a map event in between does not go unnoticed.
    awaited = static_cast<xcb_window_t>(window);
    selectEvents(awaited);
    endOfPatience = mainActor.schedule(mainActor.now() + patience, patience / 10, [this] { stopWaiting(); });
    takeOnceViewable();
    connection.flush();
}

void OwnWindows::takeOnceViewable() {
    const std::optional<bool> answer = isViewable(awaited);
    if (!answer) {
        // The turn may have been long, for example because it has just loaded a toolkit, and leave no time for a
        // request. No event may follow, so the next turn repeats the request.
        nextLook = mainActor.schedule(mainActor.now(), std::chrono::milliseconds(1), [this] { takeOnceViewable(); });
    } else if (*answer) {
        take(awaited);
    }
}

bool OwnWindows::hasKeyboard(Number window) {
    if (window == awaited) {
        return true;
    }
    const auto focus = connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.raw()));
    return focus && focus->focus == window;
}

bool OwnWindows::areBlended() {
    if (compositorSelection == XCB_ATOM_NONE) {
        // EWMH, Compositing Managers.
        const std::string name = "_NET_WM_CM_S" + std::to_string(connection.screenNumber());
        const auto interned = connection.reply<xcb_intern_atom_reply_t>(
            xcb_intern_atom(connection.raw(), 0, static_cast<std::uint16_t>(name.size()), name.data()));
        compositorSelection = interned ? interned->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
    const auto owner = connection.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection.raw(), compositorSelection));
    return owner && owner->owner != XCB_WINDOW_NONE;
}

void OwnWindows::handle(const xcb_generic_event_t& event) {
    if (const auto* mapped = eventAs<xcb_map_notify_event_t>(event, XCB_MAP_NOTIFY)) {
        if (mapped->window == awaited) {
            takeOnceViewable();
        }
    } else if (const auto* seen = eventAs<xcb_visibility_notify_event_t>(event, XCB_VISIBILITY_NOTIFY)) {
        if (seen->window == awaited) {
            takeOnceViewable();
        }
    } else if (const auto* unmapped = eventAs<xcb_unmap_notify_event_t>(event, XCB_UNMAP_NOTIFY)) {
        // It may have been shown again since, and then it keeps the keyboard focus.
        if (loanOf(unmapped->window) != loans.end() && !isViewable(unmapped->window).value_or(false)) {
            giveBack(unmapped->window);
        }
    } else if (const auto* destroyed = eventAs<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY)) {
        if (destroyed->window == awaited) {
            stopWaiting();
        }
        giveBack(destroyed->window);
    }
}

std::optional<bool> OwnWindows::isViewable(xcb_window_t window) {
    const auto attributes =
        connection.reply<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes(connection.raw(), window));
    if (attributes) {
        return attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    }
    // The request for a window that is gone has no reply either.
    return connection.isOutOfTime() ? std::nullopt : std::optional(false);
}

void OwnWindows::take(xcb_window_t window) {
    const xcb_get_input_focus_cookie_t question = xcb_get_input_focus(connection.raw());
    const xcb_timestamp_t time = clock.now();
    const auto focus = connection.reply<xcb_get_input_focus_reply_t>(question);
    const auto known = loanOf(window);
    // A window to which the server passed the focus when ours was hidden has no right to it: the former owner still
    // gets it back.
    const auto hasNoOwner = [&] {
        return focus->focus == XCB_INPUT_FOCUS_NONE || focus->focus == XCB_INPUT_FOCUS_POINTER_ROOT ||
               focus->focus == connection.root();
    };
    if (known != loans.end() && focus && (focus->focus == window || hasNoOwner())) {
        known->time = time;
    } else if (focus && focus->focus != window) {
        if (known != loans.end()) {
            loans.erase(known);
        }
        loans.push_back({.window = window, .owner = focus->focus, .ownersRevertTo = focus->revert_to, .time = time});
    }
    setFocus(window, XCB_INPUT_FOCUS_PARENT, time);
    stopWaiting();
}

void OwnWindows::giveBack(xcb_window_t window) {
    const auto found = loanOf(window);
    if (found == loans.end()) {
        return;
    }
    const Loan ended = *found;
    loans.erase(found);
    selectEvents(window);
    setFocus(ended.owner, ended.ownersRevertTo, ended.time);
    for (Loan& other : loans) {
        if (other.owner == window) {
            other.owner = ended.owner;
            other.ownersRevertTo = ended.ownersRevertTo;
        }
        // The window that has the focus again has it by a newer request.
        if (other.window == ended.owner) {
            other.time = ended.time;
        }
    }
}

void OwnWindows::stopWaiting() {
    endOfPatience.reset();
    nextLook.reset();
    if (awaited != XCB_WINDOW_NONE) {
        selectEvents(std::exchange(awaited, XCB_WINDOW_NONE));
    }
}

void OwnWindows::selectEvents(xcb_window_t window) {
    std::uint32_t mask = XCB_EVENT_MASK_NO_EVENT;
    if (loanOf(window) != loans.end()) {
        mask |= XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    }
    // A window inside a frame is mapped before it is visible.
    if (window == awaited) {
        mask |= XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_VISIBILITY_CHANGE;
    }
    selection.selectBeside(window, mask);
}

void OwnWindows::setFocus(xcb_window_t window, std::uint8_t revertTo, xcb_timestamp_t time) {
    // A window that has just been hidden cannot have it: that error is not ours.
    const xcb_void_cookie_t request = xcb_set_input_focus_checked(connection.raw(), revertTo, window, time);
    xcb_discard_reply(connection.raw(), request.sequence);
    connection.flush();
}

std::vector<OwnWindows::Loan>::iterator OwnWindows::loanOf(xcb_window_t window) {
    return std::ranges::find(loans, window, &Loan::window);
}

} // namespace platform::x11
