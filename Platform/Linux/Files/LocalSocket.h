#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <string>

namespace platform::linux {

/// Whether a process listens at the Unix socket of that path. Does not wait.
[[nodiscard]] bool isListenedTo(const std::string& path);

/// A connection to the Unix socket of that path, for reading and writing without waiting. Empty if nothing listens
/// there, or the listen queue is full. Does not wait.
[[nodiscard]] FileDescriptor connectTo(const std::string& path);

} // namespace platform::linux
