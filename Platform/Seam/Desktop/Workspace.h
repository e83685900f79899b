#pragma once

#include "Platform/Seam/Desktop/Accessibility.h"

#include <optional>

namespace platform {

/// The applications that run on the desktop. Main thread only.
class Workspace {
public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// The process of the focused application; empty without one.
    [[nodiscard]] virtual std::optional<ProcessIdentifier> frontmostApplication() = 0;
};

} // namespace platform
