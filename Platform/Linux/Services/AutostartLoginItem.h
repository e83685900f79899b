#pragma once

#include "Platform/Seam/Desktop/LoginItemService.h"

#include <optional>
#include <string>
#include <vector>

namespace platform::linux {

/// Starting at login through a desktop entry, "org.corvid.Tessel.desktop", in the user's autostart folder (Desktop
/// Application Autostart Specification 0.5).
///
/// An entry that the user's or the desktop's settings have switched off (`Hidden`, `X-GNOME-Autostart-enabled`, or not
/// for this desktop) reads as `requiresApproval`; registering switches it on again, as the user has just asked for
/// that. An entry whose program is not there reads as `notFound`.
class AutostartLoginItem final : public LoginItemService {
public:
    struct Places {
        /// The folder of the user's entry; empty without a home folder.
        std::optional<std::string> userFolder;
        /// The folders of entries for all users, the most important folder first.
        std::vector<std::string> systemFolders;
        /// The program to start, an absolute path; empty if it is unknown.
        std::optional<std::string> program;
        /// The names in `XDG_CURRENT_DESKTOP`.
        std::vector<std::string> currentDesktops;
        /// The folders of `PATH`, with colons between them.
        std::string searchPath;

        /// Reads the environment: main thread.
        [[nodiscard]] static Places ofThisProcess();
    };

    explicit AutostartLoginItem(Places places = Places::ofThisProcess());

    [[nodiscard]] LoginItemStatus status() override;
    std::expected<void, std::string> registerItem() override;

    /// Removes the user's entry. If there is one for all users, a hidden entry of the user's overrides it.
    std::expected<void, std::string> unregisterItem() override;

private:
    /// The entry for all users that would start the program.
    [[nodiscard]] std::optional<std::string> systemEntry() const;
    [[nodiscard]] LoginItemStatus statusOf(const std::string& path) const;
    [[nodiscard]] std::expected<void, std::string> write(bool isHidden) const;

    Places places;
};

} // namespace platform::linux
