#pragma once

#include "Platform/Seam/Desktop/Appearance.h"

#include <functional>
#include <utility>

namespace platform::simulated {

/// A user who changes the settings.
class Appearance final : public platform::Appearance {
public:
    [[nodiscard]] ColorScheme colorScheme() const override { return scheme; }

    [[nodiscard]] bool reducesMotion() const override { return wantsLessMotion; }

    void follow(std::function<void()> newChanged) override { changed = std::move(newChanged); }

    [[nodiscard]] bool isFollowed() const { return changed != nullptr; }

    void setColorScheme(ColorScheme wanted) {
        scheme = wanted;
        notify();
    }

    void setReducesMotion(bool wanted) {
        wantsLessMotion = wanted;
        notify();
    }

private:
    void notify() const {
        if (changed) {
            changed();
        }
    }

    ColorScheme scheme = ColorScheme::light;
    bool wantsLessMotion = false;
    std::function<void()> changed;
};

} // namespace platform::simulated
