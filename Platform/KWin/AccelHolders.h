#pragma once

#include "Platform/KWin/GlobalAccel.h"
#include "Platform/Linux/Bus/SessionBus.h"
#include "Platform/Linux/Loop/MainLoop.h"
#include "Platform/Seam/Desktop/ShortcutHolders.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace platform::kwin {

/// Asks KGlobalAccel for the holder of a combination. It knows the names that the system's settings show. Never waits;
/// main thread only.
class AccelHolders final : public ShortcutHolders, private linux::SessionBus::Listener {
public:
    /// A later reply is discarded.
    static constexpr std::chrono::seconds patience{5};

    /// Returns the action that one of Qt's keys is borrowed from; null if it is not borrowed.
    using Lender = std::function<const AccelAction*(std::int32_t key)>;

    /// All arguments must outlive this. There is no request to KGlobalAccel for a key that has a lender.
    AccelHolders(linux::MainLoop& mainLoop, linux::SessionBus& sessionBus, Lender lender = nullptr);

    [[nodiscard]] std::unique_ptr<HolderSearch> find(const std::vector<corvid::Shortcut>& shortcuts,
                                                     Found found) override;

private:
    class Search;

    void busArrived(sd_bus* arrived) override { bus = arrived; }

    void busLeft() override { bus = nullptr; }

    linux::MainLoop& mainLoop;
    Lender lender;
    sd_bus* bus = nullptr;
};

} // namespace platform::kwin
