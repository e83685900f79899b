#pragma once

#include "Platform/Linux/Services/AppearanceSource.h"
#include "Platform/Linux/Services/PortalSettings.h"
#include "Platform/Seam/Desktop/Appearance.h"

#include <functional>

namespace platform::linux {

/// The user's settings for the appearance of programs, from the first source that has each: the desktop portal, then
/// `GTK_THEME` in the environment, then the desktop itself.
class Appearance final : public platform::Appearance {
public:
    /// Both must outlive this; `desktop` is null if the desktop itself has no such settings.
    Appearance(SessionBus& bus, AppearanceSource* desktop);

    [[nodiscard]] ColorScheme colorScheme() const override;
    [[nodiscard]] bool reducesMotion() const override;
    void follow(std::function<void()> changed) override;

private:
    /// A whole picture of the wishes: nothing in it is left open.
    [[nodiscard]] AppearanceWishes combined() const;
    void sourceChanged();

    PortalSettings portal;
    AppearanceSource* desktop;
    AppearanceWishes environment;
    AppearanceWishes reported;
    std::function<void()> changed;
    bool isFollowed = false;
};

} // namespace platform::linux
