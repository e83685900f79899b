#include "Platform/Simulated/StatusBar.h"

#include <utility>

namespace platform::simulated {

std::optional<Image> StatusBar::symbolImage(std::string_view name, std::string_view accessibilityDescription) const {
    if (!symbols.contains(name)) {
        return std::nullopt;
    }
    return Image({.source = SystemSymbol{std::string(name)},
                  .size = {18, 18},
                  .accessibilityDescription = std::string(accessibilityDescription)});
}

std::unique_ptr<StatusItem> StatusBar::createStatusItem(std::string_view autosaveName) {
    return std::make_unique<Item>(*this, autosaveName);
}

StatusBar::Item::Item(StatusBar& bar, std::string_view autosaveName)
    : autosaveName(autosaveName)
    , bar(bar) {
    bar.trace.record("create status item " + this->autosaveName);
    bar.alive.push_back(this);
}

StatusBar::Item::~Item() {
    bar.trace.record("remove status item " + autosaveName);
    std::erase(bar.alive, this);
}

std::optional<corvid::CGRect> StatusBar::Item::frame() const {
    return bar.hasPanel ? bar.itemFrame : std::nullopt;
}

void StatusBar::Item::setImage(const Image& newImage) {
    bar.trace.record("set status item image");
    image = newImage;
}

void StatusBar::Item::setAction(Action newAction) {
    action = std::move(newAction);
}

void StatusBar::Item::setMenu(std::vector<StatusMenuLine> lines) {
    menu = std::move(lines);
}

void StatusBar::Item::click(std::optional<corvid::CGPoint> position) const {
    // A copy: the action may destroy the item.
    const Action copy = action;
    if (bar.hasPanel && copy) {
        copy(position);
    }
}

void StatusBar::Item::choose(std::size_t line) const {
    const StatusMenuLine copy = menu.at(line);
    if (bar.hasPanel && copy.isEnabled && copy.action) {
        copy.action();
    }
}

} // namespace platform::simulated
