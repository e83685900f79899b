#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"
#include "Platform/Seam/Desktop/Accessibility.h"
#include "Platform/Seam/Desktop/MainActor.h"

#include <optional>
#include <string>

namespace platform::linux {

/// A connection to the Unix socket of that path, which does not block. Does not wait: invalid if nothing listens there,
/// or the listen queue is full.
[[nodiscard]] FileDescriptor connectedTo(const std::string& path);

/// Waits until one of poll's events has come for the socket, or its peer is gone; false if the deadline comes first.
/// May return early without either.
[[nodiscard]] bool awaitSocket(const FileDescriptor& socket, short event, const MainActor& clock, Instant deadline);

/// Whether a process listens at the Unix socket of that path. Does not wait.
[[nodiscard]] bool isListenedTo(const std::string& path);

/// The process that listens at the Unix socket of that path (unix(7), SO_PEERCRED). Does not wait; empty without one.
[[nodiscard]] std::optional<ProcessIdentifier> listenerAt(const std::string& path);

} // namespace platform::linux
