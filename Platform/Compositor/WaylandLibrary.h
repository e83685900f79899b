#pragma once

#include <wayland-client.h>

namespace platform::compositor {

/// The parts of Wayland's own library that are in use here. It is loaded when the first one asks, since only one
/// desktop needs it: linked, it would take 52 KB of private memory on every other one. Main thread only.
struct WaylandLibrary {
    decltype(&::wl_display_connect_to_fd) connectToDescriptor = nullptr;
    decltype(&::wl_display_disconnect) disconnect = nullptr;
    decltype(&::wl_display_get_error) error = nullptr;
    decltype(&::wl_display_prepare_read) prepareRead = nullptr;
    decltype(&::wl_display_cancel_read) cancelRead = nullptr;
    decltype(&::wl_display_read_events) readEvents = nullptr;
    decltype(&::wl_display_dispatch_pending) dispatchPending = nullptr;
    decltype(&::wl_display_flush) flush = nullptr;
    decltype(&::wl_proxy_marshal_array_flags) marshal = nullptr;
    decltype(&::wl_proxy_add_listener) addListener = nullptr;
    decltype(&::wl_proxy_destroy) destroy = nullptr;
    const wl_interface* registryInterface = nullptr;
    const wl_interface* callbackInterface = nullptr;

    /// Null if the library is not installed, or lacks a part. The same one for the life of the process.
    [[nodiscard]] static const WaylandLibrary* loaded();
};

} // namespace platform::compositor
