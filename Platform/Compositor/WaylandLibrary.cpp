#include "Platform/Compositor/WaylandLibrary.h"

#include <dlfcn.h>

#include <optional>

namespace platform::compositor {

namespace {

/// Whether the library has it.
template <typename Part>
bool find(void* library, const char* name, Part& part) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): that is how dlsym(3) gives functions.
    part = reinterpret_cast<Part>(dlsym(library, name));
    return part != nullptr;
}

std::optional<WaylandLibrary> load() {
    void* file = dlopen("libwayland-client.so.0", RTLD_NOW | RTLD_LOCAL);
    if (file == nullptr) {
        return std::nullopt;
    }
    WaylandLibrary parts;
    const bool isWhole =
        find(file, "wl_display_connect_to_fd", parts.connectToDescriptor) &&
        find(file, "wl_display_disconnect", parts.disconnect) && find(file, "wl_display_get_error", parts.error) &&
        find(file, "wl_display_prepare_read", parts.prepareRead) &&
        find(file, "wl_display_cancel_read", parts.cancelRead) &&
        find(file, "wl_display_read_events", parts.readEvents) &&
        find(file, "wl_display_dispatch_pending", parts.dispatchPending) &&
        find(file, "wl_display_flush", parts.flush) && find(file, "wl_proxy_marshal_array_flags", parts.marshal) &&
        find(file, "wl_proxy_add_listener", parts.addListener) && find(file, "wl_proxy_destroy", parts.destroy) &&
        find(file, "wl_registry_interface", parts.registryInterface) &&
        find(file, "wl_callback_interface", parts.callbackInterface);
    return isWhole ? std::optional(parts) : std::nullopt;
}

} // namespace

const WaylandLibrary* WaylandLibrary::loaded() {
    static const std::optional<WaylandLibrary> library = load();
    return library ? &*library : nullptr;
}

} // namespace platform::compositor
