#include "Platform/GnomeShell/TopBar.h"

#include "Platform/Linux/Tray/SymbolPicture.h"
#include "Platform/Linux/Windows/ScreenSpace.h"
#include "Platform/ShellCore/Arguments.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

namespace platform::gnomeshell {

TopBar::TopBar(linux::MainLoop& mainLoop, shellcore::ShellLink& link, const compositor::WindowTable& table,
               std::string iconThemePath)
    : Listener(link)
    , mainLoop(mainLoop)
    , link(link)
    , table(table)
    , iconThemePath(std::move(iconThemePath)) {
}

void TopBar::show(const linux::TrayContents& newContents) {
    contents = &newContents;
    send();
}

void TopBar::hide() {
    contents = nullptr;
    link.send("HideItem", "");
}

void TopBar::update(Change /*change*/) {
    send();
}

std::optional<corvid::CGRect> TopBar::frame() const {
    if (!isShown()) {
        return std::nullopt;
    }
    const shellcore::ShellLink::Answer answer = link.call(link.deadline(), "ItemFrame", "");
    const auto item = answer ? shellcore::rectangleOf(answer->get()) : std::nullopt;
    return item ? inScreenSpace(*item) : std::nullopt;
}

void TopBar::opened(const shellcore::Hello& /*hello*/, bool isNew) {
    if (isNew) {
        send();
        offerChanged();
    }
}

void TopBar::closed() {
    offerChanged();
}

void TopBar::signalArrived(std::string_view signal, sd_bus_message* message) {
    std::uint32_t line = 0;
    if (signal == "ItemClicked") {
        if (const auto item = shellcore::rectangleOf(message)) {
            clicked(*item);
        }
    } else if (signal == "ItemChosen" && sd_bus_message_read(message, "u", &line) > 0) {
        chosen(line);
    }
}

void TopBar::send() const {
    if (!link.isOpen() || contents == nullptr) {
        return;
    }
    nlohmann::json menu = nlohmann::json::array();
    for (const StatusMenuLine& line : contents->menu) {
        nlohmann::json described{{"title", line.title}, {"isEnabled", line.isEnabled}};
        if (line.isChecked) {
            described["isChecked"] = *line.isChecked;
        }
        menu.push_back(std::move(described));
    }
    const std::string icon = contents->image ? linux::symbolicIconName(contents->image->description()) : std::string();
    const std::string file = icon.empty() ? "" : iconThemePath + "/hicolor/symbolic/apps/" + icon + ".svg";
    const nlohmann::json item{{"icon", file}, {"title", contents->title}, {"menu", std::move(menu)}};
    // Invalid UTF-8 is replaced by valid text.
    const std::string text = item.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    link.send("ShowItem", "s", text.c_str());
}

void TopBar::clicked(const corvid::CGRect& item) const {
    const auto place = inScreenSpace(item);
    if (contents == nullptr || !contents->action || !place) {
        return;
    }
    // The middle of its lower edge. A copy: the item may be gone by then, with its action.
    const corvid::CGPoint position{place->minX() + (place->size.width / 2), place->minY()};
    mainLoop.post([action = contents->action, position] { action(position); });
}

void TopBar::chosen(std::size_t line) const {
    if (contents != nullptr && line < contents->menu.size() && contents->menu[line].action) {
        mainLoop.post([action = contents->menu[line].action] { action(); });
    }
}

std::optional<corvid::CGRect> TopBar::inScreenSpace(const corvid::CGRect& rectangle) const {
    if (table.outputs().empty()) {
        return std::nullopt;
    }
    return linux::inScreenSpace(rectangle, table.outputs().front().frame);
}

} // namespace platform::gnomeshell
