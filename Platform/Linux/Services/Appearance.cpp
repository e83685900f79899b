#include "Platform/Linux/Services/Appearance.h"

#include "Platform/Linux/Services/ThemeName.h"

#include <array>
#include <cstdlib>
#include <utility>

namespace platform::linux {

Appearance::Appearance(SessionBus& bus, AppearanceSource* desktop)
    : portal(bus)
    , desktop(desktop) {
}

ColorScheme Appearance::colorScheme() const {
    return combined().colorScheme.value();
}

bool Appearance::reducesMotion() const {
    return combined().reducesMotion.value();
}

void Appearance::follow(std::function<void()> newChanged) {
    changed = std::move(newChanged);
    if (std::exchange(isFollowed, true)) {
        return;
    }
    // The environment stays as it was at the start.
    const char* theme = std::getenv("GTK_THEME"); // NOLINT(concurrency-mt-unsafe)
    environment.colorScheme = theme == nullptr ? std::nullopt : colorSchemeOfTheme(theme);
    portal.follow([this] { sourceChanged(); });
    if (desktop != nullptr) {
        desktop->follow([this] { sourceChanged(); });
    }
    reported = combined();
}

AppearanceWishes Appearance::combined() const {
    AppearanceWishes first;
    for (const AppearanceWishes& wishes :
         {portal.wishes(), environment, desktop == nullptr ? AppearanceWishes() : desktop->wishes()}) {
        first.colorScheme = first.colorScheme ? first.colorScheme : wishes.colorScheme;
        first.reducesMotion = first.reducesMotion ? first.reducesMotion : wishes.reducesMotion;
    }
    return {.colorScheme = first.colorScheme.value_or(ColorScheme::light),
            .reducesMotion = first.reducesMotion.value_or(false)};
}

void Appearance::sourceChanged() {
    // A change in a source of lower rank may change nothing.
    if (std::exchange(reported, combined()) != reported && changed) {
        changed();
    }
}

} // namespace platform::linux
