#pragma once

#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/Seam/Desktop/MainActor.h"
#include "Platform/Seam/Desktop/StatusItem.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::linux {

/// The panel's place for the program's item, whichever kind of panel there is: the first of the places that is offered
/// shows it, and never two at once. It moves when a better place comes, and back when that goes.
///
/// A program has one item; while there are several, the oldest is shown.
class StatusBar final : public platform::StatusBar {
public:
    /// How long a panel that takes items in several ways is given to offer the best of them.
    static constexpr Duration patience = std::chrono::milliseconds(400);

    /// The places by preference; the first has the item even before it is offered, so that it can come at once. They
    /// and the main actor must outlive the bar, and the bar its items. `program` is the program's identifier.
    StatusBar(MainActor& mainActor, std::string program, std::vector<TrayPlace*> places);
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    ~StatusBar() override;

    [[nodiscard]] std::optional<Image> symbolImage(std::string_view name,
                                                   std::string_view accessibilityDescription) const override;
    [[nodiscard]] std::unique_ptr<StatusItem> createStatusItem(std::string_view autosaveName) override;

private:
    class Item;

    /// Moves the item from a place where it does not belong to the one where it does: to the first place at once, to
    /// another after some time.
    void settle();
    void showIn(TrayPlace& place);
    void leave();
    [[nodiscard]] const TrayPlace* placeOf(const Item& item) const;

    MainActor& mainActor;
    std::string program;
    std::vector<TrayPlace*> places;
    std::vector<Item*> items;
    /// The item's contents, and the place that shows them.
    const Item* shown = nullptr;
    std::vector<TrayPlace*> used;
    std::unique_ptr<ScheduledWork> move;
};

} // namespace platform::linux
