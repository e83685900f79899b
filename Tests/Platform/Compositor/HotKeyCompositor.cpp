#include "Tests/Platform/Compositor/HotKeyCompositor.h"

#include "vicinae-hotkey-v1-server-protocol.h"
#include "xx-hotkey-v1-server-protocol.h"

#include <fcntl.h>
#include <unistd.h>
#include <wayland-server.h>

#include <algorithm>
#include <array>
#include <future>
#include <stdexcept>

namespace {

constexpr std::uint32_t serial = 1;
constexpr std::uint32_t moment = 1;

HotKeyCompositor& owner(wl_resource* resource) {
    return *static_cast<HotKeyCompositor*>(wl_resource_get_user_data(resource));
}

void destroy(wl_client* /*client*/, wl_resource* resource) {
    wl_resource_destroy(resource);
}

void forget(wl_resource* resource) {
    owner(resource).remove(resource);
}

const struct vicinae_hotkey_v1_interface oldKey{.destroy = destroy};

void bindOld(wl_client* client, wl_resource* manager, std::uint32_t id, std::uint32_t keysym, std::uint32_t modifiers,
             std::uint32_t seat, const char* application, const char* description) {
    if (seat != 0) {
        wl_client_post_implementation_error(client, "a seat was named");
        return;
    }
    wl_resource* resource = wl_resource_create(client, &vicinae_hotkey_v1_interface, 1, id);
    wl_resource_set_implementation(resource, &oldKey, &owner(manager), forget);
    owner(manager).add(
        client, resource,
        {.keysym = keysym, .modifiers = modifiers, .application = application, .description = description});
    owner(manager).find(resource)->isOld = true;
    owner(manager).commit(resource);
}

const struct vicinae_hotkey_manager_v1_interface oldManager{.destroy = destroy, .bind = bindOld};

void setDescription(wl_client* /*client*/, wl_resource* resource, const char* description) {
    owner(resource).find(resource)->key.description = description;
}

void setSeat(wl_client* /*client*/, wl_resource* /*resource*/, std::uint32_t /*seat*/) {
}

void setKeyTrigger(wl_client* /*client*/, wl_resource* resource, std::uint32_t keysym, std::uint32_t modifiers) {
    HotKeyCompositor::Key& key = owner(resource).find(resource)->key;
    key.keysym = keysym;
    key.modifiers = modifiers;
}

void setButtonTrigger(wl_client* client, wl_resource* /*resource*/, std::uint32_t /*button*/,
                      std::uint32_t /*modifiers*/) {
    wl_client_post_implementation_error(client, "a button was named");
}

void commit(wl_client* /*client*/, wl_resource* resource) {
    owner(resource).commit(resource);
}

const struct xx_hotkey_v1_interface newKey{.destroy = destroy,
                                           .set_description = setDescription,
                                           .set_seat = setSeat,
                                           .set_key_trigger = setKeyTrigger,
                                           .set_button_trigger = setButtonTrigger,
                                           .commit = commit};

void setApplication(wl_client* /*client*/, wl_resource* manager, const char* application) {
    owner(manager).application = application;
}

void createHotKey(wl_client* client, wl_resource* manager, std::uint32_t id) {
    wl_resource* resource = wl_resource_create(client, &xx_hotkey_v1_interface, 1, id);
    wl_resource_set_implementation(resource, &newKey, &owner(manager), forget);
    owner(manager).add(client, resource, {.application = owner(manager).application, .description = {}});
}

const struct xx_hotkey_manager_v1_interface newManager{
    .destroy = destroy, .set_app_id = setApplication, .create_hotkey = createHotKey};

void offerOld(wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
    wl_resource* resource =
        wl_resource_create(client, &vicinae_hotkey_manager_v1_interface, static_cast<int>(version), id);
    wl_resource_set_implementation(resource, &oldManager, data, nullptr);
}

void offerNew(wl_client* client, void* data, std::uint32_t version, std::uint32_t id) {
    wl_resource* resource = wl_resource_create(client, &xx_hotkey_manager_v1_interface, static_cast<int>(version), id);
    wl_resource_set_implementation(resource, &newManager, data, nullptr);
}

} // namespace

HotKeyCompositor::HotKeyCompositor(Offer offer)
    : display(wl_display_create()) {
    if (offer == Offer::vicinae || offer == Offer::both) {
        wl_global_create(display, &vicinae_hotkey_manager_v1_interface, 1, this, offerOld);
    }
    if (offer == Offer::xx || offer == Offer::both) {
        wl_global_create(display, &xx_hotkey_manager_v1_interface, 1, this, offerNew);
    }
    std::array<int, 2> ends{};
    if (wl_display_add_socket(display, path().c_str()) != 0 || ::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::runtime_error("no socket for Wayland");
    }
    wakeReading = ends[0];
    wakeWriting = ends[1];
    wakeSource = wl_event_loop_add_fd(
        wl_display_get_event_loop(display), wakeReading, WL_EVENT_READABLE,
        [](int descriptor, std::uint32_t /*mask*/, void* data) {
            std::function<void()>* work = nullptr;
            while (::read(descriptor, &work, sizeof work) == static_cast<ssize_t>(sizeof work)) {
                (*work)();
            }
            static_cast<void>(data);
            return 0;
        },
        this);
    thread = std::thread([this] { serve(); });
}

HotKeyCompositor::~HotKeyCompositor() {
    run([this] { isEnding = true; });
    thread.join();
    wl_event_source_remove(wakeSource);
    wl_display_destroy_clients(display);
    wl_display_destroy(display);
    ::close(wakeReading);
    ::close(wakeWriting);
}

void HotKeyCompositor::serve() {
    while (!isEnding) {
        wl_display_flush_clients(display);
        wl_event_loop_dispatch(wl_display_get_event_loop(display), -1);
    }
}

void HotKeyCompositor::run(const std::function<void()>& work) {
    std::promise<void> done;
    std::function<void()> whole = [&] {
        work();
        wl_display_flush_clients(display);
        done.set_value();
    };
    std::function<void()>* address = &whole;
    if (::write(wakeWriting, &address, sizeof address) != static_cast<ssize_t>(sizeof address)) {
        throw std::runtime_error("cannot wake the compositor");
    }
    done.get_future().wait();
}

void HotKeyCompositor::deny(std::uint32_t keysym, const std::string& message) {
    run([&] { denials[keysym] = message; });
}

void HotKeyCompositor::beSilent() {
    run([this] { isSilent = true; });
}

std::vector<HotKeyCompositor::Key> HotKeyCompositor::keys() {
    std::vector<Key> all;
    run([&] { std::ranges::transform(requested, std::back_inserter(all), &Requested::key); });
    return all;
}

void HotKeyCompositor::press(std::uint32_t keysym) {
    run([&] {
        for (const Requested& each : requested) {
            if (each.key.keysym == keysym && each.isOld) {
                vicinae_hotkey_v1_send_pressed(each.resource, serial, moment);
                vicinae_hotkey_v1_send_released(each.resource, serial, moment);
            } else if (each.key.keysym == keysym) {
                xx_hotkey_v1_send_triggered(each.resource, serial, moment);
                xx_hotkey_v1_send_released(each.resource, serial, moment);
            }
        }
    });
}

void HotKeyCompositor::revoke(std::uint32_t keysym) {
    run([&] {
        for (Requested& each : requested) {
            if (each.key.keysym == keysym && each.isOld) {
                constexpr std::uint32_t superseded = 1;
                vicinae_hotkey_v1_send_revoked(each.resource, superseded, "the configuration has it now");
            } else if (each.key.keysym == keysym) {
                xx_hotkey_v1_send_revoked(each.resource, "");
            }
        }
    });
}

void HotKeyCompositor::disconnect() {
    run([this] { wl_display_destroy_clients(display); });
}

int HotKeyCompositor::clients() {
    int count = 0;
    run([&] { count = wl_list_length(wl_display_get_client_list(display)); });
    return count;
}

void HotKeyCompositor::add(wl_client* /*client*/, wl_resource* resource, const Key& key) {
    requested.push_back({.resource = resource, .isOld = false, .key = key});
}

HotKeyCompositor::Requested* HotKeyCompositor::find(wl_resource* resource) {
    const auto found = std::ranges::find(requested, resource, &Requested::resource);
    return found == requested.end() ? nullptr : &*found;
}

void HotKeyCompositor::commit(wl_resource* resource) {
    Requested& each = *find(resource);
    if (isSilent) {
        return;
    }
    if (const auto denial = denials.find(each.key.keysym); denial != denials.end()) {
        each.isOld ? vicinae_hotkey_v1_send_denied(resource, 0, denial->second.c_str())
                   : xx_hotkey_v1_send_denied(resource, 0, denial->second.c_str());
        return;
    }
    each.key.isBound = true;
    each.isOld ? vicinae_hotkey_v1_send_bound(resource) : xx_hotkey_v1_send_bound(resource);
}

void HotKeyCompositor::remove(wl_resource* resource) {
    std::erase_if(requested, [&](const Requested& each) { return each.resource == resource; });
}
