#pragma once

#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Seam/Desktop/AddressOpener.h"

#include <list>
#include <string_view>

namespace platform::linux {

/// Opens addresses through the desktop portal (XDG Desktop Portal, org.freedesktop.portal.OpenURI) where the bus has
/// it, otherwise, or where the portal refuses, with xdg-open. Links to settings open the desktop's own page
/// (`SettingsPages`). This program itself connects to nothing. Main thread only.
class AddressOpener final : public platform::AddressOpener, private SessionBus::Listener {
public:
    /// The bus must outlive this.
    explicit AddressOpener(SessionBus& bus);
    ~AddressOpener() override;

    /// Never waits: true means that there is a program to pass the address to.
    bool open(std::string_view address) override;

private:
    struct Call;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    static int namesListed(sd_bus_message* reply, void* data, sd_bus_error* error);
    static int portalAnswered(sd_bus_message* reply, void* data, sd_bus_error* error);

    [[nodiscard]] bool askPortal(std::string_view address);

    sd_bus* bus = nullptr;
    NameOwner portal;
    /// The question whether the portal can be started.
    OwnedSlot namesQuestion;
    bool canStartPortal = false;
    std::list<Call> calls;
};

} // namespace platform::linux
