#pragma once

#include "Platform/Linux/Services/AppearanceSource.h"
#include "Platform/X11/EventSelection.h"

#include <functional>

namespace platform::x11 {

/// The user's settings from an X11 desktop's settings manager (XSETTINGS): whether its theme is a dark one, and whether
/// animations are enabled. Follows managers as they start, end and replace each other.
class SettingsManager final : public linux::AppearanceSource {
public:
    SettingsManager(Connection& connection, EventSelection& selection)
        : connection(connection)
        , selection(selection) {}

    [[nodiscard]] linux::AppearanceWishes wishes() const override { return known; }

    void follow(std::function<void()> changed) override;

    /// Handles the event if it is about the manager.
    void handle(const xcb_generic_event_t& event);

private:
    void internNames();
    /// Finds the present manager, and reads its settings.
    void find();
    void read();

    Connection& connection;
    EventSelection& selection;
    std::function<void()> changed;
    xcb_atom_t managerSelection = XCB_ATOM_NONE;
    xcb_atom_t announcement = XCB_ATOM_NONE;
    xcb_atom_t property = XCB_ATOM_NONE;
    xcb_window_t manager = XCB_WINDOW_NONE;
    linux::AppearanceWishes known;
};

} // namespace platform::x11
