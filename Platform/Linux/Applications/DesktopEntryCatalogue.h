#pragma once

#include "Platform/ApplicationCatalogue.h"
#include "Platform/Linux/Applications/DesktopEntries.h"

namespace platform::linux {

/// The applications that desktop entries describe. Their identifiers are desktop file ids without ".desktop", and
/// compare exactly. An entry whose `TryExec` names a program that is not there describes nothing that is installed.
class DesktopEntryCatalogue final : public ApplicationCatalogue {
public:
    /// `entries` must outlive the catalogue.
    explicit DesktopEntryCatalogue(DesktopEntries& entries)
        : entries(entries) {}

    /// Those that are neither `NoDisplay` nor for other desktops only (`OnlyShowIn`, `NotShowIn`).
    [[nodiscard]] std::vector<std::filesystem::path> locations() override;

    [[nodiscard]] std::optional<std::filesystem::path> location(std::string_view bundleIdentifier) override;

    /// An entry outside the folders of applications, such as one that lies on the desktop, has its file name as its
    /// identifier, or that of the installed entry that it is a link to.
    [[nodiscard]] std::optional<std::string> bundleIdentifier(const std::filesystem::path& location) override;

    [[nodiscard]] std::string displayName(const std::filesystem::path& location) override;

    [[nodiscard]] std::vector<std::string> searchTerms(const std::filesystem::path& location) override;

    /// In 32 by 32 points.
    [[nodiscard]] Image icon(const std::filesystem::path& location) override;

private:
    [[nodiscard]] bool isInstalled(const DesktopEntryIndex::Entry& entry) const;

    DesktopEntries& entries;
};

} // namespace platform::linux
