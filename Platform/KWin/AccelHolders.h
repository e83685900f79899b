#pragma once

#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/MainLoop.h"
#include "Platform/ShortcutHolders.h"

#include <chrono>

namespace platform::kwin {

/// Asks KGlobalAccel whose a combination is (org.kde.KGlobalAccel, getGlobalShortcutsByKey). It knows the names that
/// people read in the system's settings. Nothing waits; main thread only.
class AccelHolders final : public ShortcutHolders, private linux::SessionBus::Listener {
public:
    /// An answer that takes longer does not come.
    static constexpr std::chrono::seconds patience{5};

    /// Both have to outlive this.
    AccelHolders(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus);

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    class Search;

    void busArrived(sd_bus* arrived) override { bus = arrived; }

    void busLeft() override { bus = nullptr; }

    linux::MainLoop& mainLoop;
    sd_bus* bus = nullptr;
};

} // namespace platform::kwin
