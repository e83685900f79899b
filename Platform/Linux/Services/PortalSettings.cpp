#include "Platform/Linux/Services/PortalSettings.h"

#include "Platform/Linux/Bus/BusVariant.h"
#include "Platform/Linux/Bus/Calls.h"
#include "Platform/Linux/Services/DesktopPortal.h"

#include <utility>

namespace platform::linux {

namespace {

constexpr BusMember settingsMember(const char* name) {
    return {portalName, portalPath, "org.freedesktop.portal.Settings", name};
}

constexpr const char* appearanceSpace = "org.freedesktop.appearance";
constexpr const char* gnomeSpace = "org.gnome.desktop.interface";

} // namespace

PortalSettings::PortalSettings(SessionBus& bus)
    : Listener(bus)
    , portal(portalName, [this] {
        if (!portal.owner().empty()) {
            readAll();
        }
    }) {
}

PortalSettings::~PortalSettings() = default;

AppearanceWishes PortalSettings::wishes() const {
    // The portal's own numbers; any other than these is "no preference".
    constexpr std::uint32_t prefersDark = 1;
    constexpr std::uint32_t prefersLight = 2;
    constexpr std::uint32_t prefersReducedMotion = 1;
    AppearanceWishes wishes;
    if (known.colorScheme == prefersDark || known.colorScheme == prefersLight) {
        wishes.colorScheme = known.colorScheme == prefersDark ? ColorScheme::dark : ColorScheme::light;
    }
    if (known.reducedMotion == prefersReducedMotion) {
        wishes.reducesMotion = true;
    } else if (known.enableAnimations) {
        wishes.reducesMotion = !*known.enableAnimations;
    }
    return wishes;
}

void PortalSettings::follow(std::function<void()> newChanged) {
    changed = std::move(newChanged);
    isFollowed = true;
    if (bus != nullptr) {
        listen();
    }
}

void PortalSettings::busArrived(sd_bus* arrived) {
    bus = arrived;
    if (isFollowed) {
        listen();
    }
}

void PortalSettings::busLeft() {
    bus = nullptr;
    changes.reset();
    portal.forget();
    question.reset();
    take({});
}

void PortalSettings::listen() {
    changes = linux::listen(bus, settingsMember("SettingChanged"), &settingChanged, this);
    portal.followChanges(bus);
    readAll();
}

void PortalSettings::readAll() {
    question = call(bus, settingsMember("ReadAll"), &allRead, this, "as", 2, appearanceSpace, gnomeSpace);
}

int PortalSettings::allRead(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<PortalSettings*>(data);
    Settings read;
    if (sd_bus_message_is_method_error(reply, nullptr) == 0 &&
        sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "{sa{sv}}") > 0) {
        while (sd_bus_message_enter_container(reply, SD_BUS_TYPE_DICT_ENTRY, "sa{sv}") > 0) {
            readNamespace(reply, read);
            if (sd_bus_message_exit_container(reply) < 0) {
                break;
            }
        }
        self.take(read);
    }
    return 0;
}

void PortalSettings::readNamespace(sd_bus_message* message, Settings& settings) {
    const char* space = nullptr;
    if (sd_bus_message_read(message, "s", &space) <= 0 ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0) {
        return;
    }
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0) {
        const char* key = nullptr;
        if (sd_bus_message_read(message, "s", &key) > 0) {
            readSetting(message, space, key, settings);
        }
        if (sd_bus_message_exit_container(message) < 0) {
            return;
        }
    }
    sd_bus_message_exit_container(message);
}

void PortalSettings::readSetting(sd_bus_message* message, std::string_view space, std::string_view key,
                                 Settings& settings) {
    if (space == appearanceSpace && key == "color-scheme") {
        settings.colorScheme = readVariant<std::uint32_t>(message, "u");
    } else if (space == appearanceSpace && key == "reduced-motion") {
        settings.reducedMotion = readVariant<std::uint32_t>(message, "u");
    } else if (space == gnomeSpace && key == "enable-animations") {
        const std::optional<int> boolean = readVariant<int>(message, "b");
        settings.enableAnimations = boolean ? std::optional(*boolean != 0) : std::nullopt;
    } else {
        sd_bus_message_skip(message, "v");
    }
}

int PortalSettings::settingChanged(sd_bus_message* signal, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<PortalSettings*>(data);
    const char* space = nullptr;
    const char* key = nullptr;
    if (sd_bus_message_has_signature(signal, "ssv") > 0 && sd_bus_message_read(signal, "ss", &space, &key) > 0) {
        Settings read = self.known;
        readSetting(signal, space, key, read);
        self.take(read);
    }
    return 0;
}

void PortalSettings::take(const Settings& settings) {
    if (std::exchange(known, settings) != settings && changed) {
        changed();
    }
}

} // namespace platform::linux
