#pragma once

#include "Benchmarks/Probes/Probe.h"

#include <fake-input-client-protocol.h>
#include <virtual-keyboard-client-protocol.h>
#include <wayland-client.h>
#include <xdg-shell-client-protocol.h>

#include <cstdint>
#include <memory>
#include <string_view>

namespace benchmarks::wayland {

/// Frees a Wayland C object together with its owner.
struct Destroy {
    void operator()(wl_display* raw) const { wl_display_disconnect(raw); }
    void operator()(wl_registry* raw) const { wl_registry_destroy(raw); }
    void operator()(wl_compositor* raw) const { wl_compositor_destroy(raw); }
    void operator()(wl_surface* raw) const { wl_surface_destroy(raw); }
    void operator()(wl_shm* raw) const { wl_shm_destroy(raw); }
    void operator()(wl_shm_pool* raw) const { wl_shm_pool_destroy(raw); }
    void operator()(wl_seat* raw) const { wl_seat_destroy(raw); }
    void operator()(wl_callback* raw) const { wl_callback_destroy(raw); }
    void operator()(wl_keyboard* raw) const { wl_keyboard_destroy(raw); }
    void operator()(xdg_wm_base* raw) const { xdg_wm_base_destroy(raw); }
    void operator()(xdg_surface* raw) const { xdg_surface_destroy(raw); }
    void operator()(xdg_toplevel* raw) const { xdg_toplevel_destroy(raw); }
    void operator()(org_kde_kwin_fake_input* raw) const { org_kde_kwin_fake_input_destroy(raw); }
    void operator()(zwp_virtual_keyboard_manager_v1* raw) const { zwp_virtual_keyboard_manager_v1_destroy(raw); }
    void operator()(zwp_virtual_keyboard_v1* raw) const { zwp_virtual_keyboard_v1_destroy(raw); }
};

template <typename Object>
using Owned = std::unique_ptr<Object, Destroy>;

/// A probe's only connection to the compositor of WAYLAND_DISPLAY, and the globals that the compositor offers.
class Connection {
public:
    Connection();

    [[nodiscard]] wl_display* raw() const { return display.get(); }

    void flush() const { wl_display_flush(raw()); }

    /// Returns when the compositor has handled every earlier request.
    void synchronize() const;

    /// Handles events until an event has arrived, the descriptor is readable, or the limit has passed. Returns whether
    /// the descriptor is readable; -1 stands for no descriptor.
    bool handleEvents(Clock::time_point limit, int descriptor = -1) const;

private:
    // The registry is destroyed first.
    Owned<wl_display> display;

public:
    Owned<wl_compositor> compositor;
    Owned<wl_shm> memory;
    Owned<wl_seat> seat;
    Owned<xdg_wm_base> shell;
    Owned<org_kde_kwin_fake_input> fakeInput;
    Owned<zwp_virtual_keyboard_manager_v1> keyboards;

private:
    static void announce(void* data, wl_registry* registry, std::uint32_t name, const char* interface,
                         std::uint32_t version);
    void take(std::uint32_t name, std::string_view interface, std::uint32_t version);

    Owned<wl_registry> registry;
};

} // namespace benchmarks::wayland
