#pragma once

#include "Platform/Seam/Desktop/StatusItem.h"
#include "Platform/Simulated/Trace.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace platform::simulated {

/// A panel that can be removed.
///
/// Trace: "create status item Item-0", "set status item image", "remove status item Item-0".
class StatusBar final : public platform::StatusBar {
public:
    class Item;

    explicit StatusBar(Trace& trace)
        : trace(trace) {}

    [[nodiscard]] std::optional<Image> symbolImage(std::string_view name,
                                                   std::string_view accessibilityDescription) const override;
    [[nodiscard]] std::unique_ptr<StatusItem> createStatusItem(std::string_view autosaveName) override;

    /// The living items, oldest first.
    [[nodiscard]] const std::vector<Item*>& items() const { return alive; }

    /// The names of the existing symbols.
    std::set<std::string, std::less<>> symbols{"exclamationmark.triangle.fill", "rectangle.split.2x1",
                                               "uiwindow.split.2x1"};
    /// Whether there is a panel.
    bool hasPanel = true;
    /// The panel's frame for every item, if it reports one.
    std::optional<corvid::CGRect> itemFrame = corvid::CGRect{{1800, 1056}, {24, 24}};

private:
    Trace& trace;
    std::vector<Item*> alive;
};

/// A panel's data on an item.
class StatusBar::Item final : public StatusItem {
public:
    Item(StatusBar& bar, std::string_view autosaveName);
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;
    ~Item() override;

    [[nodiscard]] bool isShown() const override { return bar.hasPanel; }
    [[nodiscard]] std::optional<corvid::CGRect> frame() const override;
    void setImage(const Image& newImage) override;
    void setTitle(std::string_view newTitle) override { title = newTitle; }
    void setToolTip(std::string_view text) override { toolTip = text; }
    void setAction(Action newAction) override;
    void setMenu(std::vector<StatusMenuLine> lines) override;

    /// Clicks the item; without a panel nothing happens.
    void click(std::optional<corvid::CGPoint> position = std::nullopt) const;

    /// Activates a line of the menu; a disabled one does nothing.
    void choose(std::size_t line) const;

    const std::string autosaveName;
    std::optional<Image> image;
    std::string title;
    std::string toolTip;
    std::vector<StatusMenuLine> menu;

private:
    StatusBar& bar;
    Action action;
};

} // namespace platform::simulated
