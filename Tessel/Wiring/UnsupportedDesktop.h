#pragma once

#include "Platform/Absent/Desktop.h"
#include "Platform/Linux/Desktop.h"

namespace tessel {

/// A Wayland session of a compositor that offers us no way to its windows. The program runs, shows its item and its
/// window as far as the compositor lets it, keeps its settings, and waits for a permission that never comes.
class UnsupportedDesktop final : public platform::linux::Desktop {
public:
    [[nodiscard]] std::string_view name() const override { return "none"; }

    void followApplications(platform::linux::ApplicationIdentification& /*identification*/,
                            platform::ApplicationCatalogue& /*catalogue*/) override {}

    [[nodiscard]] platform::Accessibility& accessibility() override { return absent.accessibility; }

    [[nodiscard]] platform::AccessibilityObservers& accessibilityObservers() override {
        return absent.accessibilityObservers;
    }

    [[nodiscard]] platform::Beep& sound() override { return absent.sound; }

    [[nodiscard]] platform::HotKeyEvents& hotKeyEvents() override { return absent.hotKeyEvents; }

    [[nodiscard]] platform::OwnWindows& ownWindows() override { return own; }

    [[nodiscard]] platform::RunningApplications& runningApplications() override { return absent.runningApplications; }

    [[nodiscard]] platform::Screens& screens() override { return absent.screens; }

    [[nodiscard]] platform::Workspace& workspace() override { return absent.workspace; }

    [[nodiscard]] platform::linux::AppearanceSource* appearanceSource() override { return nullptr; }

    [[nodiscard]] platform::linux::TrayPlace* trayPlace() override { return nullptr; }

private:
    platform::absent::Desktop absent;
    platform::absent::OwnWindows own{platform::OwnWindows::Protocol::wayland};
};

} // namespace tessel
