#pragma once

#include "Platform/Linux/Applications/ApplicationIdentification.h"
#include "Platform/Linux/Applications/DesktopEntries.h"
#include "Platform/Linux/Applications/ProcessFacts.h"

#include <optional>
#include <string>
#include <utility>

namespace platform::linux {

/// Tells applications apart by their desktop entries, by the first of these that fits one: the sandbox of the process,
/// its systemd unit, the toolkit's application id, the window's class, the program.
///
/// A sandboxed process whose sandbox has no entry is not identified: its windows bear the names of applications
/// installed outside as well.
class DesktopEntryIdentification final : public ApplicationIdentification {
public:
    /// `entries` must outlive the identification. `processFolder` is where the kernel shows processes.
    explicit DesktopEntryIdentification(DesktopEntries& entries,
                                        std::string processFolder = std::string(ProcessFacts::standardFolder))
        : entries(entries)
        , processFolder(std::move(processFolder)) {}

    [[nodiscard]] std::optional<std::string> bundleIdentifier(const ApplicationClues& clues) override;

private:
    DesktopEntries& entries;
    std::string processFolder;
};

} // namespace platform::linux
