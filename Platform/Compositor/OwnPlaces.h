#pragma once

#include "CorvidKitCore/Geometry.h"
#include "Platform/Seam/Desktop/Accessibility.h"

#include <map>
#include <optional>
#include <string>

namespace platform::compositor {

/// The places of windows of this process that have yet to be put there, by the windows' titles.
class OwnPlaces {
public:
    /// `process`: this one.
    explicit OwnPlaces(ProcessIdentifier process)
        : process(process) {}

    /// The top-left corner for a window, which may not be there yet.
    void set(const std::string& title, corvid::CGPoint topLeft) { due.insert_or_assign(title, topLeft); }

    /// The corner for a window that is there; empty if it is not ours, or was taken since it was set.
    [[nodiscard]] std::optional<corvid::CGPoint> take(ProcessIdentifier owner, const std::string& title) {
        const auto entry = owner == process ? due.extract(title) : decltype(due.extract(title))();
        return entry.empty() ? std::nullopt : std::optional(entry.mapped());
    }

private:
    ProcessIdentifier process;
    std::map<std::string, corvid::CGPoint> due;
};

} // namespace platform::compositor
