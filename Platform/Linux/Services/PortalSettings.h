#pragma once

#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Services/AppearanceSource.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace platform::linux {

/// The user's wishes by the desktop portal (XDG Desktop Portal, org.freedesktop.portal.Settings). The first call starts
/// the portal. Without a portal there are no wishes. Nothing waits.
class PortalSettings final : public AppearanceSource, private SessionBus::Listener {
public:
    /// The bus must outlive this.
    explicit PortalSettings(SessionBus& bus);
    ~PortalSettings() override;

    [[nodiscard]] AppearanceWishes wishes() const override;
    void follow(std::function<void()> changed) override;

private:
    /// The settings themselves; nothing for one that the portal does not have.
    struct Settings {
        std::optional<std::uint32_t> colorScheme;
        std::optional<std::uint32_t> reducedMotion;
        std::optional<bool> enableAnimations;

        friend bool operator==(const Settings&, const Settings&) = default;
    };

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    static int allRead(sd_bus_message* reply, void* data, sd_bus_error* error);
    static int settingChanged(sd_bus_message* signal, void* data, sd_bus_error* error);

    void listen();
    void readAll();
    static void readNamespace(sd_bus_message* message, Settings& settings);
    static void readSetting(sd_bus_message* message, std::string_view space, std::string_view key, Settings& settings);
    void take(const Settings& settings);

    sd_bus* bus = nullptr;
    bool isFollowed = false;
    std::function<void()> changed;
    Settings known;
    OwnedSlot changes;
    /// A portal that comes, or comes again, announces only later changes by itself.
    NameOwner portal;
    OwnedSlot question;
};

} // namespace platform::linux
