#pragma once

#include "Platform/Absent/Desktop.h"
#include "Platform/Linux/Desktop.h"

namespace tessel {

/// A Wayland session of a compositor without an interface to its windows for us. The program runs, shows its item and
/// its window as far as the compositor allows, keeps its settings, and never gets the permission to move windows.
class UnsupportedDesktop final : public platform::linux::Desktop {
public:
    [[nodiscard]] std::string_view name() const override { return "none"; }

    void followApplications(platform::linux::ApplicationIdentification& /*identification*/,
                            platform::ApplicationCatalogue& /*catalogue*/) override {}

    [[nodiscard]] platform::DesktopParts parts() override { return absent.parts(); }

private:
    platform::absent::Desktop absent;
};

} // namespace tessel
