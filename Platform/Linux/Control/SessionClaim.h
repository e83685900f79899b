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

/// Takes the right to be the session's only Tessel, or asks the holder to show itself. A holder that is about to end is
/// followed rather than asked. Waits for at most `ControlClient::patience`.
[[nodiscard]] std::expected<SingleInstance, SessionRefusal> claimSession(const Session& session);

} // namespace platform::linux
