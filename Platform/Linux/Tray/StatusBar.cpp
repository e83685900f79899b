#include "Platform/Linux/Tray/StatusBar.h"

#include "Platform/Linux/Tray/SymbolPicture.h"

#include <algorithm>
#include <utility>

namespace platform::linux {

class StatusBar::Item final : public StatusItem {
public:
    Item(StatusBar& bar, std::string identifier)
        : bar(bar) {
        contents.identifier = std::move(identifier);
        bar.items.push_back(this);
        bar.settle();
    }

    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;

    ~Item() override {
        std::erase(bar.items, this);
        bar.settle();
    }

    [[nodiscard]] bool isShown() const override {
        const TrayPlace* place = bar.placeOf(*this);
        return place != nullptr && place->isShown();
    }

    [[nodiscard]] std::optional<corvid::CGRect> frame() const override {
        const TrayPlace* place = bar.placeOf(*this);
        return place == nullptr ? std::nullopt : place->frame();
    }

    void setImage(const Image& image) override {
        contents.image = image;
        notify(TrayPlace::Change::image);
    }

    void setTitle(std::string_view title) override {
        contents.title = title;
        notify(TrayPlace::Change::title);
    }

    void setToolTip(std::string_view text) override {
        contents.toolTip = text;
        notify(TrayPlace::Change::toolTip);
    }

    void setAction(Action action) override { contents.action = std::move(action); }

    void setMenu(std::vector<StatusMenuLine> lines) override {
        contents.menu = std::move(lines);
        notify(TrayPlace::Change::menu);
    }

    TrayContents contents;

private:
    void notify(TrayPlace::Change change) const {
        if (bar.shown == this) {
            for (TrayPlace* place : bar.used) {
                place->update(change);
            }
        }
    }

    StatusBar& bar;
};

StatusBar::StatusBar(MainActor& mainActor, std::string program, std::vector<TrayPlace*> places)
    : mainActor(mainActor)
    , program(std::move(program))
    , places(std::move(places)) {
    for (TrayPlace* place : this->places) {
        place->onOfferChange([this] { settle(); });
    }
}

StatusBar::~StatusBar() {
    for (TrayPlace* place : places) {
        place->onOfferChange(nullptr);
    }
}

std::optional<Image> StatusBar::symbolImage(std::string_view name, std::string_view accessibilityDescription) const {
    if (!isSymbol(name)) {
        return std::nullopt;
    }
    return Image({.source = SystemSymbol{std::string(name)},
                  .size = {symbolPoints, symbolPoints},
                  .accessibilityDescription = std::string(accessibilityDescription)});
}

std::unique_ptr<StatusItem> StatusBar::createStatusItem(std::string_view autosaveName) {
    return std::make_unique<Item>(*this, program + "." + std::string(autosaveName));
}

void StatusBar::settle() {
    const Item* wanted = items.empty() ? nullptr : items.front();
    if (shown != wanted) {
        leave();
        shown = wanted;
    }
    if (shown == nullptr) {
        return;
    }
    TrayPlace* const first = places.front();
    const auto found = std::ranges::find_if(places, &TrayPlace::isOffered);
    // The first place is never left: it shows nothing while it is not offered.
    TrayPlace* const best = found == places.end() ? first : *found;
    const auto isUsed = [this](const TrayPlace* place) { return std::ranges::find(used, place) != used.end(); };
    for (TrayPlace* place : places) {
        if (place != first && place != best && isUsed(place)) {
            std::erase(used, place);
            place->hide();
        }
    }
    if (!isUsed(first)) {
        showIn(*first);
    }
    if (isUsed(best)) {
        move.reset();
    } else {
        move = mainActor.schedule(mainActor.now() + patience, patience / 10, [this, best] { showIn(*best); });
    }
}

void StatusBar::showIn(TrayPlace& place) {
    used.push_back(&place);
    place.show(shown->contents);
}

void StatusBar::leave() {
    move.reset();
    for (TrayPlace* place : std::exchange(used, {})) {
        place->hide();
    }
}

const TrayPlace* StatusBar::placeOf(const Item& item) const {
    const auto best = std::ranges::find_if(used, &TrayPlace::isOffered);
    return shown != &item || best == used.end() ? nullptr : *best;
}

} // namespace platform::linux
