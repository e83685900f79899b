#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace platform::linux {

/// The treatment of a file that is larger than the limit.
enum class Excess : std::uint8_t { refused, cutOff };

/// The contents of a regular file, at most `most` bytes of it; also of a file of the kernel's, whose size is unknown
/// beforehand. Empty if the file is missing or unreadable, is not a regular file, or is larger and that is `refused`.
/// Never waits on a pipe, and opens no device. Any thread.
[[nodiscard]] std::optional<std::string> readRegularFile(const std::string& path, std::size_t most, Excess excess);

/// Whether there is a regular file that this process may execute.
[[nodiscard]] bool isExecutableFile(const std::string& path);

} // namespace platform::linux
