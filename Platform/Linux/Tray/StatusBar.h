#pragma once

#include "Platform/Linux/Tray/TrayPlace.h"
#include "Platform/StatusItem.h"

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
    /// The places by preference; the first is shown in even before it is offered, so that it can come at once. They
    /// must outlive the bar, and the bar its items. `program` is the program's identifier.
    StatusBar(std::string program, std::vector<TrayPlace*> places);
    StatusBar(const StatusBar&) = delete;
    StatusBar& operator=(const StatusBar&) = delete;
    ~StatusBar() override;

    [[nodiscard]] std::optional<Image> symbolImage(std::string_view name,
                                                   std::string_view accessibilityDescription) const override;
    [[nodiscard]] std::unique_ptr<StatusItem> createStatusItem(std::string_view autosaveName) override;

private:
    class Item;

    /// Shows the item that is to be shown in the place where it belongs now.
    void settle();
    void leave();
    [[nodiscard]] const TrayPlace* placeOf(const Item& item) const;

    std::string program;
    std::vector<TrayPlace*> places;
    std::vector<Item*> items;
    /// What is shown, and in which of the places.
    const Item* shown = nullptr;
    std::vector<TrayPlace*> used;
};

} // namespace platform::linux
