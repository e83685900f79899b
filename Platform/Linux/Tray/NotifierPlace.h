#pragma once

#include "Platform/Linux/Bus/NameOwner.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Linux/Tray/NotifierItem.h"
#include "Platform/Linux/Tray/NotifierMenu.h"
#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/Seam/Desktop/Screens.h"

#include <memory>
#include <optional>
#include <string>

namespace platform::linux {

/// Panels that read status items from the message bus (StatusNotifierItem Specification). The item is registered with
/// the watcher, again whenever another one comes; it is shown where a host is registered there as well. Nothing waits
/// for the bus. Main thread only.
class NotifierPlace final : public TrayPlace, private SessionBus::Listener {
public:
    /// The number of retries for a watcher that refuses or does not reply, and the delay before each.
    static constexpr int mostTries = 5;
    static constexpr Duration untilRetry = std::chrono::milliseconds(300);

    /// The loop and the screens must outlive the place, and the place the bus's end or be dropped before it.
    /// `iconThemePath` is where panels look for the program's own icons.
    NotifierPlace(MainLoop& mainLoop, SessionBus& bus, Screens& screens, std::string iconThemePath);

    [[nodiscard]] bool isOffered() const override { return hasHost; }
    void show(const TrayContents& newContents) override;
    void hide() override;
    void update(Change change) override;
    [[nodiscard]] bool isShown() const override { return hasHost && isRegistered; }
    /// Panels do not report it.
    [[nodiscard]] std::optional<corvid::CGRect> frame() const override { return std::nullopt; }

private:
    struct Answers;

    void busArrived(sd_bus* arrived) override;
    void busLeft() override;

    void watcherChanged();
    void watcherLeft();
    void registerItem();
    void askForHost();
    void setHasHost(bool has);
    void clicked(std::int32_t x, std::int32_t y);
    [[nodiscard]] std::optional<corvid::CGPoint> inScreenSpace(std::int32_t x, std::int32_t y) const;

    MainLoop& mainLoop;
    Screens& screens;
    NotifierItem item;
    NotifierMenu menu;
    NameOwner watcher;
    const TrayContents* contents = nullptr;
    sd_bus* bus = nullptr;
    bool hasHost = false;
    bool isRegistered = false;
    int tries = 0;
    OwnedSlot hostMatch;
    OwnedSlot hostQuestion;
    OwnedSlot registration;
    std::unique_ptr<ScheduledWork> retry;
};

} // namespace platform::linux
