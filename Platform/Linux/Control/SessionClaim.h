#pragma once

#include "Platform/Linux/Control/SingleInstance.h"

#include <expected>
#include <string>

namespace platform::linux {

/// Why this process is not to run.
struct SessionRefusal {
    /// Whether the one that runs already was asked to show itself.
    bool asked = false;
    /// Otherwise: a sentence without its full stop.
    std::string reason;
};

/// Takes the right to be the session's only Tessel, or makes the holder show itself. If the holder is about to end,
/// this takes its place instead. Waits for at most `ControlClient::patience`.
[[nodiscard]] std::expected<SingleInstance, SessionRefusal> claimSession(const Session& session);

} // namespace platform::linux
