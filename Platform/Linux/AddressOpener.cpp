#include "Platform/Linux/AddressOpener.h"

#include "CorvidKitCore/Address.h"
#include "Platform/Linux/BaseFolders.h"
#include "Platform/Linux/Bus/Calls.h"
#include "Platform/Linux/DesktopPortal.h"
#include "Platform/Linux/ProgramStart.h"
#include "Platform/Linux/SettingsPages.h"

#include <algorithm>
#include <string>

namespace platform::linux {

namespace {

constexpr BusMember openMethod{portalName, portalPath, "org.freedesktop.portal.OpenURI", "OpenURI"};

bool openSettings(std::string_view link) {
    const auto pages = SettingsPages::pages(link, environmentVariable("XDG_CURRENT_DESKTOP").value_or(""));
    return std::ranges::any_of(
        pages, [](const SettingsPages::Page& page) { return startProgram(page.program, page.arguments); });
}

bool runOpener(std::string_view address) {
    return startProgram("xdg-open", {std::string(address)});
}

} // namespace

/// A call to the portal that is under way.
struct AddressOpener::Call {
    AddressOpener& opener;
    std::string address;
    OwnedSlot slot;
};

AddressOpener::AddressOpener(SessionBus& bus)
    : Listener(bus)
    , portal(portalName, [] {}) {
}

AddressOpener::~AddressOpener() = default;

bool AddressOpener::open(std::string_view address) {
    if (!corvid::isAddress(address)) {
        return false;
    }
    if (SettingsPages::isLink(address)) {
        return openSettings(address);
    }
    return askPortal(address) || runOpener(address);
}

bool AddressOpener::askPortal(std::string_view address) {
    if (bus == nullptr || (portal.owner().empty() && !canStartPortal)) {
        return false;
    }
    Call& started = calls.emplace_back(*this, std::string(address));
    // No parent window, no options.
    started.slot = call(bus, openMethod, &portalAnswered, &started, "ssa{sv}", "", started.address.c_str(), 0);
    if (started.slot == nullptr) {
        calls.pop_back();
        return false;
    }
    return true;
}

int AddressOpener::portalAnswered(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    const auto* const call = static_cast<Call*>(data);
    AddressOpener& opener = call->opener;
    if (sd_bus_message_is_method_error(reply, nullptr) > 0) {
        runOpener(call->address);
    }
    opener.calls.remove_if([call](const Call& other) { return &other == call; });
    return 0;
}

void AddressOpener::busArrived(sd_bus* arrived) {
    bus = arrived;
    portal.follow(bus);
    namesQuestion = call(bus, methodOfBus("ListActivatableNames"), &namesListed, this, "");
}

void AddressOpener::busLeft() {
    bus = nullptr;
    canStartPortal = false;
    portal.forget();
    namesQuestion.reset();
    calls.clear();
}

int AddressOpener::namesListed(sd_bus_message* reply, void* data, sd_bus_error* /*error*/) {
    auto& self = *static_cast<AddressOpener*>(data);
    if (sd_bus_message_is_method_error(reply, nullptr) != 0 ||
        sd_bus_message_enter_container(reply, SD_BUS_TYPE_ARRAY, "s") <= 0) {
        return 0;
    }
    const char* name = nullptr;
    while (sd_bus_message_read(reply, "s", &name) > 0) {
        self.canStartPortal = self.canStartPortal || std::string_view{name} == portalName;
    }
    return 0;
}

} // namespace platform::linux
